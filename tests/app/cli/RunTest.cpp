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

// What a script that makes sheets at night looks at.
TEST_F(RunScript, CheckingEndsWithACodeOfItsOwn) {
    Write("wedge.gltf", SmallModel());
    Write("make.zrs", "import wedge.gltf\nsave bare.zrsheet\ncreate\nsave done.zrsheet\n");
    ASSERT_EQ(Run({"run", "make.zrs"}).exitCode, 0);
    const CliResult done = Run({"check", "done.zrsheet"});
    EXPECT_EQ(done.exitCode, 0);
    EXPECT_EQ(done.out, "nothing found\n");
    const CliResult bare = Run({"check", "bare.zrsheet"});
    EXPECT_EQ(bare.exitCode, 1);
    EXPECT_NE(bare.out.find("\nitem without callout  item 1 (#1"), std::string::npos) << bare.out;
    const CliResult json = Run({"check", "bare.zrsheet", "--json"});
    EXPECT_EQ(json.exitCode, 1);
    EXPECT_NE(json.out.find("\"kind\": \"item-without-callout\""), std::string::npos) << json.out;
    std::filesystem::rename(In("wedge.gltf"), In("moved.gltf"));
    ExpectRefused({"check", "done.zrsheet"}, "wedge.gltf");
    EXPECT_EQ(Run({"check", "done.zrsheet", "--model", "moved.gltf"}).exitCode, 0);
}

// The sheet of a project whose author put two labels over each other, and of the model as it comes.
TEST_F(RunScript, LintingEndsWithACodeOfItsOwn) {
    Write("wedge.gltf", SmallModel());
    Write("make.zrs", "import wedge.gltf\ncreate\nlabel move 1 to 5,5\nsave off.zrsheet\n");
    ASSERT_EQ(Run({"run", "make.zrs"}).exitCode, 0);
    const CliResult good = Run({"lint", "wedge.gltf"});
    EXPECT_EQ(good.exitCode, 0) << good.out;
    EXPECT_NE(good.out.find("labels on the model"), std::string::npos) << good.out;
    const CliResult json = Run({"lint", "wedge.gltf", "--json"});
    EXPECT_NE(json.out.find("\"ratio\": 1.0"), std::string::npos) << json.out;
    Write("cover.zrs", "label move 1 to 300,300\ncamera zoom 3\nlabel move 1 to 300,300\nsave\n");
    ASSERT_EQ(Run({"run", "cover.zrs", "off.zrsheet"}).exitCode, 0);
    const CliResult bad = Run({"lint", "off.zrsheet"});
    EXPECT_EQ(bad.exitCode, 1) << bad.out;
    EXPECT_NE(bad.out.find("labels on the model                                1"), std::string::npos)
        << bad.out;
    ExpectRefused({"lint", "nought.zrsheet"}, "nought.zrsheet");
}

TEST_F(RunScript, SpeaksAsItIsToldUntilTheSheetChooses) {
    Write("wedge.gltf", SmallModel());
    Write("make.zrs", "import wedge.gltf\nsave french.zrsheet\nlanguage es\nsave spanish.zrsheet\n");
    EXPECT_EQ(Run({"run", "--language", "fr", "make.zrs"}).out, "wedge : 1 occurrence de 1 pièce\n");
    Write("look.zrs", "create\nlanguage de\nundo\nundo\n");
    EXPECT_EQ(Run({"run", "look.zrs", "french.zrsheet", "--language", "ja"}).out,
              "バルーンを1個作成\nzurückgenommen: Sprache wählen\nannulé : Créer des repères\n");
    EXPECT_EQ(Run({"check", "french.zrsheet", "--language", "de"}).out.substr(0, 6), "Befund");
    EXPECT_EQ(Run({"check", "spanish.zrsheet"}).out.substr(0, 8), "hallazgo");
    const std::string json = Run({"check", "spanish.zrsheet", "--json"}).out;
    EXPECT_NE(json.find("\"kind\": \"item-without-callout\""), std::string::npos) << json;
    EXPECT_NE(json.find("\"problem\": \"posición sin llamada\""), std::string::npos) << json;
    ExpectRefused({"check", "french.zrsheet", "--language", "it"}, "it");
}

}  // namespace
}  // namespace zrsheet
