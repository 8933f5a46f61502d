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

}  // namespace
}  // namespace zrsheet::test
