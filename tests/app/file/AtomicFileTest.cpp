#include "app/file/AtomicFile.h"

#include <gtest/gtest.h>

#include "tests/app/file/TemporaryFolder.h"

namespace zrsheet::test {
namespace {

TEST(AtomicFile, KeepsPermissionsAndLinks) {
    const TemporaryFolder folder;
    PutFile(folder / "secret", "old");
    std::filesystem::permissions(folder / "secret", std::filesystem::perms::owner_read);
    std::filesystem::create_symlink("secret", folder / "link");
    WriteFileAtomically(folder / "link", "new");
    EXPECT_EQ(ReadFile(folder / "secret"), "new");
    EXPECT_EQ(std::filesystem::status(folder / "secret").permissions(), std::filesystem::perms::owner_read);
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
}

}  // namespace
}  // namespace zrsheet::test
