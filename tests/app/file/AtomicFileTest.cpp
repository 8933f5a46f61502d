#include "app/file/AtomicFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>

#include "app/file/FileError.h"
#include "tests/app/file/TemporaryFolder.h"

namespace zrsheet::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

/// The error's text, empty when there is none.
std::string ErrorOf(const std::filesystem::path& path, const std::string& content) {
    try {
        WriteFileAtomically(path, content);
        return {};
    } catch (const FileError& error) {
        return error.what();
    }
}

/// As long as it lives no file can grow beyond a limit, as if the disk were full.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    void (*m_handler)(int) = std::signal(SIGXFSZ, SIG_IGN);
    rlimit m_before{};
};

// The second one cannot be stored, so that the first one must not have taken its name.
TEST(AtomicFile, WritesSeveralFilesOrNone) {
    const TemporaryFolder folder;
    PutFile(folder / "a.csv", "old");
    {
        const FullDisk disk(10000);
        EXPECT_THROW(
            WriteFilesAtomically({{folder / "a.csv", "new"}, {folder / "b.csv", std::string(100000, 'x')}}),
            FileError);
    }
    EXPECT_EQ(ReadFile(folder / "a.csv"), "old");
    EXPECT_EQ(folder.CountFiles(), 1);
    WriteFilesAtomically({{folder / "a.csv", "new"}, {folder / "b.csv", "other"}});
    EXPECT_EQ(ReadFile(folder / "a.csv") + ReadFile(folder / "b.csv"), "newother");
    EXPECT_EQ(folder.CountFiles(), 2);
}

TEST(AtomicFile, KeepsTheOldFileWhenTheDiskIsFull) {
    const TemporaryFolder folder;
    PutFile(folder / "a.csv", "old");
    std::string error;
    {
        const FullDisk disk(10000);
        error = ErrorOf(folder / "a.csv", std::string(100000, 'x'));
    }
    EXPECT_THAT(error, AllOf(HasSubstr("a.csv"), HasSubstr("Make room"), Not(HasSubstr("\n"))));
    EXPECT_EQ(ReadFile(folder / "a.csv"), "old");
    EXPECT_EQ(folder.CountFiles(), 1);
}

TEST(AtomicFile, SaysWhereItCannotWriteAndWhatToDo) {
    const TemporaryFolder folder;
    PutFile(folder / "file", "");
    std::filesystem::create_directory(folder / "folder.csv");
    EXPECT_THAT(ErrorOf(folder / "missing/a.csv", "x"),
                AllOf(HasSubstr("missing/a.csv"), HasSubstr("Create the folder")));
    EXPECT_THAT(ErrorOf(folder / "file/a.csv", "x"),
                AllOf(HasSubstr("file/a.csv"), HasSubstr("Create the folder")));
    EXPECT_THAT(ErrorOf(folder / "folder.csv", "x"),
                AllOf(HasSubstr("folder.csv"), HasSubstr("Name a file")));
    EXPECT_EQ(folder.CountFiles(), 2);
}

TEST(AtomicFile, KeepsPermissionsAndLinks) {
    const TemporaryFolder folder;
    PutFile(folder / "secret", "old");
    std::filesystem::permissions(folder / "secret", std::filesystem::perms::owner_read);
    std::filesystem::create_symlink("secret", folder / "link");
    EXPECT_EQ(ErrorOf(folder / "link", "new"), "");
    EXPECT_EQ(ReadFile(folder / "secret"), "new");
    EXPECT_EQ(std::filesystem::status(folder / "secret").permissions(), std::filesystem::perms::owner_read);
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
}

}  // namespace
}  // namespace zrsheet::test
