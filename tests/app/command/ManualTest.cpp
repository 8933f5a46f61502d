#include "app/command/Manual.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <set>
#include <sstream>

#include "app/command/WordSplitter.h"

namespace zrsheet {
namespace {

// docs/COMMANDS.md is made from the table: no command goes undocumented. tools/bless.py writes it anew.
TEST(Manual, IsThePageInTheDocuments) {
    const std::string page = ManualPage(CommandTable::Get());
    if (std::getenv("ZR_BLESS") != nullptr) std::ofstream(ZR_COMMANDS_PAGE, std::ios::binary) << page;
    std::ostringstream file;
    file << std::ifstream(ZR_COMMANDS_PAGE, std::ios::binary).rdbuf();
    EXPECT_TRUE(file.str() == page) << "docs/COMMANDS.md is not what the commands say; run tools/bless.py";
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

TEST(Manual, TellsAboutOneCommandOrAFamily) {
    const CommandTable& table = CommandTable::Get();
    EXPECT_EQ(HelpFor(table, "dissolve"),
              "dissolve CALLOUT\n    take a combined callout apart\n    Example: dissolve '3, 4, 5'\n");
    const std::string family = HelpFor(table, "camera");
    for (const char* usage : {"camera VIEW|X,Y,Z\n", "camera zoom FACTOR\n", "camera pan X,Y\n"}) {
        EXPECT_NE(family.find(usage), std::string::npos) << usage;
    }
}

}  // namespace
}  // namespace zrsheet
