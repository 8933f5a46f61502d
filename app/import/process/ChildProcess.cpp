#include "app/import/process/ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>
#include <thread>

extern char** environ;

namespace zrsheet {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kErrorBytes = 4096;

[[noreturn]] void ThrowErrno(int error, const std::string& what) {
    throw std::system_error(error, std::generic_category(), what);
}

class Pipe {
public:
    Pipe() {
        if (pipe2(m_ends.data(), O_CLOEXEC) != 0) ThrowErrno(errno, "pipe");
    }
    ~Pipe() {
        CloseWriteEnd();
        close(m_ends[0]);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    int ReadEnd() const { return m_ends[0]; }
    int WriteEnd() const { return m_ends[1]; }
    void CloseWriteEnd() {
        if (m_ends[1] >= 0) close(m_ends[1]);
        m_ends[1] = -1;
    }

private:
    std::array<int, 2> m_ends{-1, -1};
};

// A started program; killed and waited for when this goes, so that no path leaves one behind.
class Child {
public:
    Child(const std::filesystem::path& program, const std::vector<std::string>& arguments, const Pipe& output,
          const Pipe& errors) {
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_adddup2(&actions, output.WriteEnd(), STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&actions, errors.WriteEnd(), STDERR_FILENO);
        std::vector<char*> argv{const_cast<char*>(program.c_str())};
        for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
        argv.push_back(nullptr);
        const int error = posix_spawn(&m_id, program.c_str(), &actions, nullptr, argv.data(), environ);
        posix_spawn_file_actions_destroy(&actions);
        if (error != 0) ThrowErrno(error, program.string());
    }
    ~Child() {
        if (m_running) {
            Kill();
            Wait();
        }
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    // Set from here: setting them between fork and exec would need code that is safe there in a program of
    // many threads. The child has read nothing of the file yet.
    void Limit(const ChildLimits& limits) const {
        const auto seconds =
            static_cast<rlim_t>(std::chrono::ceil<std::chrono::seconds>(limits.time).count());
        Limit(RLIMIT_CPU, (seconds + 1) * std::max(1U, std::thread::hardware_concurrency()));
        Limit(RLIMIT_CORE, 0);
        if (limits.memoryBytes != 0) Limit(RLIMIT_AS, limits.memoryBytes);
    }
    void Kill() const { kill(m_id, SIGKILL); }
    int Wait() {
        int status = 0;
        while (waitpid(m_id, &status, 0) < 0 && errno == EINTR) {
        }
        m_running = false;
        return status;
    }

private:
    void Limit(__rlimit_resource resource, rlim_t most) const {
        const rlimit limit{most, most};
        prlimit(m_id, resource, &limit, nullptr);
    }
    pid_t m_id = -1;
    bool m_running = true;
};

// Appends what is there to read; false at the end.
bool ReadSome(int from, std::string& to) {
    std::array<char, 65536> block;
    const ssize_t count = read(from, block.data(), block.size());
    if (count > 0) to.append(block.data(), static_cast<std::size_t>(count));
    return count > 0 || (count < 0 && errno == EINTR);
}

// Parts the lines of progress on standard error from what is wrong.
class ErrorLines {
public:
    explicit ErrorLines(const std::function<void(std::string_view)>& onProgress) : m_onProgress(onProgress) {}

    // The end of `text` without a line end stays there.
    void Take(std::string& text) {
        for (std::size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n')) {
            if (text.front() == kProgressMark) {
                if (m_onProgress) m_onProgress(std::string_view(text).substr(1, end - 1));
            } else {
                Keep(text.substr(0, end + 1));
            }
            text.erase(0, end + 1);
        }
    }
    void Keep(const std::string& text) { m_errors.append(text, 0, kErrorBytes - m_errors.size()); }
    const std::string& Errors() const { return m_errors; }

private:
    const std::function<void(std::string_view)>& m_onProgress;
    std::string m_errors;
};

// Reads both pipes until both are closed. Says how it went: Exited means nothing but "to its end".
ChildResult::End Collect(int output, int errors, const ChildLimits& limits, ErrorLines& lines,
                         ChildResult& result) {
    const Clock::time_point deadline = Clock::now() + limits.time;
    std::array<pollfd, 2> waits{pollfd{output, POLLIN, 0}, pollfd{errors, POLLIN, 0}};
    while (waits[0].fd >= 0 || waits[1].fd >= 0) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0) return ChildResult::End::TimedOut;
        poll(waits.data(), waits.size(), static_cast<int>(std::min<long>(left, 60'000)));
        if (waits[0].revents != 0 && !ReadSome(output, result.output)) waits[0].fd = -1;
        if (waits[1].revents != 0 && !ReadSome(errors, result.errors)) waits[1].fd = -1;
        lines.Take(result.errors);
        result.errors.resize(std::min(result.errors.size(), kErrorBytes));
        if (result.output.size() > limits.outputBytes) return ChildResult::End::TooMuchOutput;
    }
    return ChildResult::End::Exited;
}

}  // namespace

ChildResult RunChild(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                     const ChildLimits& limits, const std::function<void(std::string_view)>& onProgress) {
    Pipe output;
    Pipe errors;
    Child child(program, arguments, output, errors);
    child.Limit(limits);
    output.CloseWriteEnd();
    errors.CloseWriteEnd();
    ChildResult result;
    ErrorLines lines(onProgress);
    result.end = Collect(output.ReadEnd(), errors.ReadEnd(), limits, lines, result);
    lines.Keep(result.errors);
    result.errors = lines.Errors();
    if (result.end != ChildResult::End::Exited) child.Kill();
    const int status = child.Wait();
    if (result.end != ChildResult::End::Exited) return result;
    if (WIFSIGNALED(status)) result.end = ChildResult::End::Signalled;
    result.code = WIFSIGNALED(status) ? WTERMSIG(status) : WEXITSTATUS(status);
    return result;
}

}  // namespace zrsheet
