#include "tests/app/cli/CliFixture.h"

namespace zrsheet {
namespace {

using CommandLine = CliFixture;

// Help is the manual: an option that it leaves out does not exist for authors.
TEST_F(CommandLine, HelpTellsOfEveryOption) {
    const std::vector<std::string> rows[] = {
        {"--help", "make", "--version"},
        {"make",       "MODEL",        "-o",         "--output",       "--view",     "--size",
         "--combine",  "--draw-one",   "--language", "--per-instance", "--template", "--numbering",
         "--select",   "--report",     "--threads",  ".svg",           ".png",       ".json",
         ".csv",       "iso",          "bottom",     "{item}",         "{quantity}", "{tag}",
         "{property:", "hierarchical", "--layout",   "--pattern",      "--distance", "--gap",
         "--rows",     "silhouette",   "Exit codes"},
        {"run", "SCRIPT", "PROJECT", "--keep-going", "FILE:LINE", "Exit codes", "'help'"},
        {"shell", "FILE", "tab key", "history", "quit", "pipe", "Exit codes"}};
    for (const auto& words : rows) {
        const CliResult help = Run({words.front(), "--help"});
        EXPECT_EQ(help.exitCode, 0);
        EXPECT_EQ(help.err, "");
        for (const auto& word : words) EXPECT_NE(help.out.find(word), std::string::npos) << word;
    }
}

}  // namespace
}  // namespace zrsheet
