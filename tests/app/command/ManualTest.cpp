#include "app/command/Manual.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <set>

#include "app/command/WordSplitter.h"
#include "tests/app/file/TemporaryFolder.h"

namespace zrsheet {
namespace {

// docs/COMMANDS.md is made from the table: no command goes undocumented. tools/bless.py writes it anew.
TEST(Manual, IsThePageInTheDocuments) {
    const std::string page = ManualPage(CommandTable::Get());
    if (std::getenv("ZR_BLESS") != nullptr) test::PutFile(ZR_COMMANDS_PAGE, page);
    EXPECT_TRUE(test::ReadFile(ZR_COMMANDS_PAGE) == page)
        << "docs/COMMANDS.md is not what the commands say; run tools/bless.py";
}

TEST(Manual, GivesEveryCommandAnExampleOfItself) {
    std::set<std::string_view> names;
    for (const CommandTopic& topic : CommandTable::Get().Topics()) {
        for (const Command& command : topic.commands) {
            EXPECT_TRUE(names.insert(command.name).second) << command.name << " is there twice";
            EXPECT_EQ(command.effect == Effect::Changes, !command.title.empty()) << command.name;
            WordSplitter splitter;
            EXPECT_FALSE(splitter.Add(command.example));
            EXPECT_EQ(&CommandTable::Get().Resolve(splitter.Take()), &command) << command.example;
        }
    }
}

}  // namespace
}  // namespace zrsheet
