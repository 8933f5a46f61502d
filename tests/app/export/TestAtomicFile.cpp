#include "app/export/AtomicFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>

#include "app/export/ExportError.h"
#include "tests/app/export/SampleSheet.h"

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
    } catch (const ExportError& error) {
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

TEST(AtomicFile, ReplacesWhatWasThere) {
    const TemporaryFolder folder;
    PutFile(folder / "a.csv", "a longer text than the new one");
    WriteFileAtomically(folder / "a.csv", std::string("new\0text", 8));
    EXPECT_EQ(ReadFile(folder / "a.csv"), std::string("new\0text", 8));
    EXPECT_EQ(folder.CountFiles(), 1);
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

// A file put in the place of a pipe, a device or a link would take it away from everybody. A pipe stands for
// them all: a test that failed on a real device would do the damage.
TEST(AtomicFile, WritesThroughLinksAndLeavesPipesAlone) {
    const TemporaryFolder folder;
    PutFile(folder / "real.csv", "old");
    std::filesystem::create_symlink(folder / "real.csv", folder / "link.csv");
    WriteFileAtomically(folder / "link.csv", "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link.csv"));
    EXPECT_EQ(ReadFile(folder / "real.csv"), "new");
    ASSERT_EQ(mkfifo((folder / "pipe.csv").c_str(), 0600), 0);
    EXPECT_THAT(ErrorOf(folder / "pipe.csv", "x"), HasSubstr("Name a file"));
    EXPECT_TRUE(std::filesystem::is_fifo(folder / "pipe.csv"));
}

}  // namespace
}  // namespace zrsheet::test
