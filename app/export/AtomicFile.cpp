#include "app/export/AtomicFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <string>
#include <system_error>

#include "app/export/ExportError.h"

namespace zrsheet {
namespace {

namespace fs = std::filesystem;

const char* AdviceFor(int error) {
    switch (error) {
        case ENOENT:
        case ENOTDIR:
            return "Create the folder first or name another one.";
        case EACCES:
        case EPERM:
        case EROFS:
            return "Name a folder that you may write to.";
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return "Make room on the disk or name a folder on another one.";
        default:
            return "Try again or name another folder.";
    }
}

[[noreturn]] void Fail(const fs::path& path, int error) {
    throw ExportError("Cannot write \"" + path.string() + "\": " + std::generic_category().message(error) +
                      ". " + AdviceFor(error));
}

/// A new file beside the target, gone with the object unless it was renamed.
class Temporary {
public:
    explicit Temporary(const fs::path& target) : m_target(target) {
        static std::atomic<unsigned> counter{0};
        do {
            m_path = target;
            m_path.concat(".").concat(std::to_string(getpid())).concat("-").concat(std::to_string(counter++));
            m_path.concat(".tmp");
            m_file = open(m_path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        } while (m_file < 0 && errno == EEXIST);
        if (m_file < 0) Fail(target, errno);
    }
    Temporary(const Temporary&) = delete;
    Temporary& operator=(const Temporary&) = delete;
    ~Temporary() {
        if (m_file >= 0) close(m_file);
        if (!m_isRenamed) unlink(m_path.c_str());
    }

    void Write(std::string_view content) {
        while (!content.empty()) {
            const ssize_t written = write(m_file, content.data(), content.size());
            if (written >= 0) {
                content.remove_prefix(static_cast<std::size_t>(written));
            } else if (errno != EINTR) {
                Fail(m_target, errno);
            }
        }
    }

    // Some file systems notice a full disk no sooner than here.
    void Finish() {
        if (fsync(m_file) != 0) Fail(m_target, errno);
        const int file = m_file;
        m_file = -1;
        if (close(file) != 0) Fail(m_target, errno);
        if (std::rename(m_path.c_str(), m_target.c_str()) != 0) Fail(m_target, errno);
        m_isRenamed = true;
    }

private:
    fs::path m_target;
    fs::path m_path;
    int m_file = -1;
    bool m_isRenamed = false;
};

/// Where the content belongs: behind a link, not in its place. A folder or a device is not to be replaced by
/// a file.
fs::path ResolveTarget(const fs::path& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (!fs::exists(status)) return path;
    if (!fs::is_regular_file(status)) {
        throw ExportError("Cannot write \"" + path.string() +
                          "\": there is something else of that name. Name a file.");
    }
    const fs::path target = fs::canonical(path, error);
    return error ? path : target;
}

}  // namespace

void CheckTarget(const fs::path& path) { const Temporary probe(ResolveTarget(path)); }

void WriteFileAtomically(const fs::path& path, std::string_view content) {
    Temporary temporary(ResolveTarget(path));
    temporary.Write(content);
    temporary.Finish();
}

}  // namespace zrsheet
