#include "tests/app/cli/TerminalSession.h"

#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <thread>

namespace zrsheet {
namespace {

constexpr int kNotStarted = 127;
constexpr std::chrono::seconds kPatience{10};

void Execute(const std::string& folder, const std::vector<std::string>& arguments,
             const std::string& locale) {
    std::vector<char*> argv{const_cast<char*>(ZR_SHEET)};
    for (const auto& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    setenv("TERM", "dumb", 1);
    setenv("LC_ALL", locale.c_str(), 1);
    setenv("HOME", folder.c_str(), 1);
    setenv("XDG_STATE_HOME", (folder + "/state").c_str(), 1);
    if (chdir(folder.c_str()) == 0) execv(argv[0], argv.data());
    _exit(kNotStarted);
}

}  // namespace

TerminalSession::TerminalSession(const std::string& folder, const std::vector<std::string>& arguments,
                                 const std::string& locale) {
    const winsize size{40, 200, 0, 0};
    m_child = forkpty(&m_terminal, nullptr, nullptr, &size);
    if (m_child == 0) Execute(folder, arguments, locale);
}

TerminalSession::~TerminalSession() {
    if (m_child > 0) {
        kill(m_child, SIGKILL);
        waitpid(m_child, nullptr, 0);
    }
    close(m_terminal);
}

void TerminalSession::Type(const std::string& keys) const {
    [[maybe_unused]] const ssize_t written = write(m_terminal, keys.data(), keys.size());
}

void TerminalSession::Interrupt() const { kill(m_child, SIGINT); }

bool TerminalSession::ReadMore(int milliseconds) {
    pollfd waiting{m_terminal, POLLIN, 0};
    if (poll(&waiting, 1, milliseconds) <= 0) return true;
    std::array<char, 4096> buffer{};
    const ssize_t count = read(m_terminal, buffer.data(), buffer.size());
    if (count <= 0) return false;
    m_screen.append(buffer.data(), static_cast<std::size_t>(count));
    return true;
}

bool TerminalSession::Shows(const std::string& text, std::chrono::seconds patience) {
    const auto end = std::chrono::steady_clock::now() + patience;
    bool isOpen = true;
    while (true) {
        const std::size_t found = m_screen.find(text, m_passed);
        if (found != std::string::npos) {
            m_passed = found + text.size();
            return true;
        }
        if (!isOpen || std::chrono::steady_clock::now() > end) return false;
        isOpen = ReadMore(50);
    }
}

int TerminalSession::ExitCode() {
    const auto end = std::chrono::steady_clock::now() + kPatience;
    int status = 0;
    while (std::chrono::steady_clock::now() < end) {
        ReadMore(10);
        if (waitpid(m_child, &status, WNOHANG) != m_child) continue;
        m_child = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    return -1;
}

}  // namespace zrsheet
