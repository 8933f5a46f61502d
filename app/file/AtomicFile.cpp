#include "app/file/AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <string>
#include <system_error>

#include "app/file/FileError.h"

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
    throw FileError("Cannot write \"" + path.string() + "\": " + std::generic_category().message(error) +
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
    void Store() {
        CopyPermissions();
        if (fsync(m_file) != 0) Fail(m_target, errno);
        const int file = m_file;
        m_file = -1;
        if (close(file) != 0) Fail(m_target, errno);
    }

    void TakeName() {
        if (std::rename(m_path.c_str(), m_target.c_str()) != 0) Fail(m_target, errno);
        m_isRenamed = true;
        SyncFolder();
    }

private:
    /// Who may not read the old file shall not read the new one. Some file systems know no permissions.
    void CopyPermissions() const {
        struct stat old {};
        if (stat(m_target.c_str(), &old) == 0) static_cast<void>(fchmod(m_file, old.st_mode & 07777U));
    }

    /// Until then the new name may be lost with the power. Folders that cannot be opened or synced keep what
    /// the file system promises by itself.
    void SyncFolder() const {
        const fs::path folder = m_target.has_parent_path() ? m_target.parent_path() : fs::path(".");
        const int opened = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (opened < 0) return;
        const int error = fsync(opened) == 0 ? 0 : errno;
        close(opened);
        if (error == EIO) Fail(m_target, error);
    }

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
        throw FileError("Cannot write \"" + path.string() +
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
    temporary.Store();
    temporary.TakeName();
}

void WriteFilesAtomically(const std::vector<FileContent>& files) {
    std::vector<std::unique_ptr<Temporary>> temporaries;
    temporaries.reserve(files.size());
    for (const FileContent& file : files) {
        Temporary& temporary =
            *temporaries.emplace_back(std::make_unique<Temporary>(ResolveTarget(file.path)));
        temporary.Write(file.content);
        temporary.Store();
    }
    for (const auto& temporary : temporaries) temporary->TakeName();
}

}  // namespace zrsheet
