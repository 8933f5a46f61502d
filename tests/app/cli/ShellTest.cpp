#include <unistd.h>

#include "tests/app/cli/CliFixture.h"
#include "tests/app/cli/TerminalSession.h"

namespace zrsheet {
namespace {

// libedit shows what is typed at its own pace, so waits are for answers, not for echoes.
#define EXPECT_SHOWN(session, text) EXPECT_TRUE((session).Shows(text)) << "shown: " << (session).Rest()

class Shell : public CliFixture {
protected:
    Shell() { Write("wedge.gltf", SmallModel()); }

    /// In a session of its own these keys get the help for "dissolve".
    void ExpectHelp(const char* keys) const {
        TerminalSession shell(In("."), {"shell"});
        EXPECT_SHOWN(shell, "zrsheet> ");
        shell.Type(keys);
        EXPECT_SHOWN(shell, "take a combined callout apart");
        EXPECT_SHOWN(shell, "zrsheet> ");
        shell.Type("quit\r");
        EXPECT_EQ(shell.ExitCode(), 0);
    }
};

TEST_F(Shell, DoesWhatComesThroughAPipe) {
    Write("commands", "import wedge.gltf\nhide Wdge\nhide Wedge\nlist parts\n");
    const CliResult result = Run({"shell"}, In("commands"));
    EXPECT_EQ(result.exitCode, 2) << "a command failed";
    EXPECT_EQ(result.out,
              "wedge: 1 instance of 1 part\n"
              "part    item  state   place  name\n"
              "/Wedge  1     hidden  0,0,0  Wedge\n");
    EXPECT_EQ(
        result.err,
        "stdin:2: command 'hide': no part matches 'Wdge'; patterns are names or paths such as 'Bolt*' or "
        "'/Pump/*', and 'list parts' shows them\n"
        "zrsheet: the changes were not saved; end with 'save FILE', or with 'quit discard' if they may go\n");
}

TEST_F(Shell, OpensTheModelItIsGiven) {
    Write("commands", "list items\n");
    const CliResult result = Run({"shell", "wedge.gltf"}, In("commands"));
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_NE(result.out.find("Wedge"), std::string::npos);
    const CliResult missing = Run({"shell", "nought.glb"}, In("commands"));
    EXPECT_EQ(missing.exitCode, 2);
    EXPECT_EQ(missing.err, "zrsheet: command 'import': nought.glb: there is no such file; check its name\n");
}

TEST_F(Shell, CompletesAndAsksAtATerminal) {
    TerminalSession shell(In("."), {"shell", "wedge.gltf"});
    EXPECT_SHOWN(shell, "wedge> ");
    shell.Type("hid\t\tW\t\r");  // lists hidden and hide; then "hid" stands and "W" is typed behind it
    EXPECT_SHOWN(shell, "hidden  hide");
    EXPECT_SHOWN(shell, "'hidW' is no command");
    shell.Type("hide W\t\r");
    EXPECT_SHOWN(shell, "wedge*> ");
    shell.Type("list par\t W\t\r");
    EXPECT_SHOWN(shell, "/Wedge  1     hidden");
    shell.Type("quit\r");
    EXPECT_SHOWN(shell, "Save the changes to wedge? (y)es, (n)o, (c)ancel: ");
    shell.Type("c\r");
    EXPECT_SHOWN(shell, "wedge*> ");
    // The end of input asks too. When the key comes before the line is open for editing the terminal makes a
    // character of it, with which the line is not empty any more: the first key takes that away.
    bool isAsked = false;
    for (int i = 0; i < 10 && !isAsked; ++i) {
        shell.Type("\x15\x04");
        isAsked = shell.Shows("Save the changes to wedge?", std::chrono::seconds(1));
    }
    EXPECT_TRUE(isAsked) << shell.Rest();
    shell.Type("n\r");
    EXPECT_EQ(shell.ExitCode(), 0);
}

TEST_F(Shell, SpeaksTheLanguageOfTheMachineAtATerminalOnly) {
    TerminalSession shell(In("."), {"shell"}, "de_AT.UTF-8");
    EXPECT_SHOWN(shell, "'quit' beendet");
    shell.Type("import wedge.gltf\r");
    EXPECT_SHOWN(shell, "wedge: 1 Vorkommen von 1 Teil");
    shell.Type("hide Wedge\r");
    EXPECT_SHOWN(shell, "wedge*> ");
    shell.Type("quit\r");
    EXPECT_SHOWN(shell, "wedge speichern? (j)a, (n)ein, (a)bbrechen: ");
    shell.Type("j\r");
    EXPECT_SHOWN(shell, "the illustration has no file yet");
    shell.Type("language es\r");
    shell.Type("list parts\r");
    EXPECT_SHOWN(shell, "denominación");
    setenv("LC_ALL", "de_AT.UTF-8", 1);
    Write("commands", "import wedge.gltf\n");
    EXPECT_EQ(Run({"shell"}, In("commands")).out, "wedge: 1 instance of 1 part\n");
    unsetenv("LC_ALL");
}

TEST_F(Shell, GivesUpTheLineWhenInterrupted) {
    TerminalSession shell(In("."), {"shell"});
    EXPECT_SHOWN(shell, "zrsheet> ");
    shell.Type("fro");
    EXPECT_SHOWN(shell, "fro");
    shell.Type("\x03");
    EXPECT_SHOWN(shell, "zrsheet> ");
    shell.Type("list x \\\r");
    EXPECT_SHOWN(shell, "... ");
    shell.Interrupt();
    EXPECT_SHOWN(shell, "zrsheet> ");
    shell.Type("frob 'Gehäuse'\r");
    EXPECT_SHOWN(shell, "'frob' is no command");
    EXPECT_SHOWN(shell, "zrsheet> ");
    shell.Type("quit\r");
    EXPECT_EQ(shell.ExitCode(), 0);
}

TEST_F(Shell, RemembersLinesFromRunToRun) {
    ExpectHelp("help dissolve\r");
    ExpectHelp("\x10\x10\r");  // twice back
}

// A folder that cannot be written costs the history, nothing else.
TEST_F(Shell, DoesWithoutAHistory) {
    Write("state", "a file where the folder would be");
    ExpectHelp("help dissolve\r");
}

}  // namespace
}  // namespace zrsheet
