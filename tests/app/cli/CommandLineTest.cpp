#include "tests/app/cli/CliFixture.h"

namespace zrsheet {
namespace {

using CommandLine = CliFixture;

// Help is the manual: an option that it leaves out does not exist for authors.
TEST_F(CommandLine, HelpTellsOfEveryOption) {
    const CliResult top = Run({"--help"});
    EXPECT_EQ(top.exitCode, 0);
    for (const char* word : {"make", "--help", "--version"})
        EXPECT_NE(top.out.find(word), std::string::npos) << word;
    const CliResult make = Run({"make", "--help"});
    EXPECT_EQ(make.exitCode, 0);
    EXPECT_EQ(make.err, "");
    for (const char* word :
         {"MODEL",          "-o",         "--output",   "--view",       "--size",   "--combine", "--draw-one",
          "--per-instance", "--template", "--language", "--numbering",  "--select", "--report",  "--threads",
          ".svg",           ".png",       ".json",      ".csv",         "iso",      "bottom",    "{item}",
          "{quantity}",     "{tag}",      "{property:", "hierarchical", "--layout", "--pattern", "--distance",
          "--gap",          "--rows",     "silhouette", "Exit codes"}) {
        EXPECT_NE(make.out.find(word), std::string::npos) << word;
    }
}

}  // namespace
}  // namespace zrsheet
