#include "tests/app/cli/CliFixture.h"

namespace zrsheet {
namespace {

using RunScript = CliFixture;

TEST_F(RunScript, EndsWithACodeAndSaysWhere) {
    Write("wedge.gltf", SmallModel());
    Write("good.zrs", "import wedge.gltf\nresize 400,300\ncreate\nexport sheet.svg\nquit discard\n");
    Write("bad.zrs", "import wedge.gltf\nfrob\nresize 400,300\nexport late.svg\n");
    const CliResult good = Run({"run", "good.zrs"});
    EXPECT_EQ(good.exitCode, 0);
    EXPECT_EQ(good.err, "");
    EXPECT_NE(Read(In("sheet.svg")).find("callout-1"), std::string::npos);
    const CliResult bad = Run({"run", "bad.zrs"});
    EXPECT_EQ(bad.exitCode, 2);
    EXPECT_EQ(bad.err, "bad.zrs:2: 'frob' is no command; 'help' lists them\n");
    EXPECT_EQ(Read(In("late.svg")), "");
    const CliResult keptGoing = Run({"run", "--keep-going", "bad.zrs"});
    EXPECT_EQ(keptGoing.exitCode, 2);
    EXPECT_TRUE(keptGoing.err.starts_with(bad.err)) << keptGoing.err;
    EXPECT_NE(Read(In("late.svg")), "");
    ExpectRefused({"run", "nought.zrs"}, "nought.zrs");
    ExpectRefused({"run", "."}, "script .");
    ExpectRefused({"run", "good.zrs", "nought.zrsheet"}, "nought.zrsheet");
}

TEST_F(RunScript, HelpReadsLikeAManual) {
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"run", "SCRIPT", "PROJECT", "--keep-going", "FILE:LINE", "Exit codes",
                                   "'help'"},
          std::vector<std::string>{"shell", "FILE", "tab key", "history", "quit", "pipe", "Exit codes"}}) {
        const CliResult help = Run({words.front(), "--help"});
        EXPECT_EQ(help.exitCode, 0);
        for (const auto& word : words) EXPECT_NE(help.out.find(word), std::string::npos) << word;
    }
}

}  // namespace
}  // namespace zrsheet
