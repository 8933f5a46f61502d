#include <gmock/gmock.h>

#include "app/command/CommandTable.h"
#include "app/command/WordSplitter.h"
#include "tests/app/command/ScriptFixture.h"

namespace zrsheet {
namespace {

using ScriptErrors = ScriptFixture;

struct Row {
    const char* command;
    const char* complaint;
};

/// That the line begins with.
const Command& CommandOf(const char* line) {
    WordSplitter splitter;
    EXPECT_FALSE(splitter.Add(line));
    return CommandTable::Get().Resolve(splitter.Take());
}

TEST_F(ScriptErrors, SayWhichArgumentIsWrongAndHowTheCommandIsUsed) {
    RunOnRig("create\ninset add of 10,10 at 50,50\n");
    const std::vector<Row> rows{
        {"move Pin", "'by' is missing"},
        {"move by 1,2,3", "PART is missing"},
        {"move Pin by 1,2", "'1,2' is no X,Y,Z, which is three numbers such as 0,0.5,-2"},
        {"move Pin by 1,2,nan", "'1,2,nan' is no X,Y,Z, which is three numbers such as 0,0.5,-2"},
        {"move Pin by 1,2,3,4", "'1,2,3,4' is no X,Y,Z, which is three numbers such as 0,0.5,-2"},
        {"move Pin by 1,2,3 now", "'now' is too much"},
        {"hidden maybe", "'maybe' is none of off, on"},
        {"hidden", "one of off, on is missing"},
        {"align sideways *", "'sideways' is no MODE; 'help align' lists them"},
        {"align 10 *", "'10' is no MODE; 'help align' lists them"},
        {"item number 1 0", "'0' is no NUMBER, which is a whole number from 1 to 999999"},
        {"inset factor inset-1 0", "a factor is above 0 and up to 1000"},
        {"inset add of 1,1 at 2,2 radius=big", "'big' is no number for radius"},
        {"camera zoom 0", "a factor is from 0.001 to 1000"},
        {"resize 10,10", "a page is from 400,300 to 20000,20000 pixels large"},
        {"background mauve",
         "'mauve' is no COLOR; use white, black, gray, blue or six digits such as f0e8d0"},
        {"create leaders=some", "'some' is no choice of leaders; use one, all or each"},
    };
    const std::string before = Dump();
    for (const Row& row : rows) {
        const Command& command = CommandOf(row.command);
        EXPECT_EQ(Run(row.command), "s:1: command '" + std::string(command.name) + "': " + row.complaint +
                                        "; usage: " + command.Usage() + "\n");
    }
    EXPECT_EQ(Dump(), before) << "a command that failed has changed something";
}

TEST_F(ScriptErrors, SayWhatIsWrongAndWhatToDo) {
    RunOnRig("create\ninset add of 10,10 at 50,50\n");
    const std::vector<Row> rows{
        {"move 'by' by 1,2,3",
         "no part matches 'by'; patterns are names or paths such as 'Bolt*' or '/Pump/*', and 'list parts' "
         "shows them"},
        {"align left 1", "these are too few callouts; lining up needs 2, distributing 3"},
        {"label set 9 x", "no callout is called '9'; 'list callouts' shows their ids and labels"},
        {"label set * x", "'*' calls 2 callouts; name one by its id, which 'list callouts' shows"},
        {"label move * to 5,5", "several labels have no room at one place; move them 'by' X,Y"},
        {"combine 1", "one callout alone cannot be combined; name two or more"},
        {"dissolve 1", "'1' is no combined callout"},
        {"item remove Z", "'Z' is no item; 'list items' shows their labels and ids"},
        {"item rename 1 2", "there is an item '2' already; choose another label"},
        {"item number 1 2",
         "item '1' cannot have the number 2: another item has it, or the item has a label of its own "
         "('item rename 1 \"\"' takes that away)"},
        {"template use nought", "there is no template 'nought'; 'template define' makes one"},
        {"template define label x", "there is a template 'label' already; change it with 'template edit'"},
        {"template edit label '{nonsense}'",
         "template '{nonsense}': {nonsense} is not known; use {item}, {quantity}, {tag}, {name}, "
         "{property:NAME}, {parent:NAME}, {root:NAME}, {file:NAME} or {line}, and {{ for a brace"},
        {"inset move inset-2 by 1,1", "'inset-2' is no inset; 'list insets' shows them"},
        {"symbol add star at 0,0,0", "symbol 'star': not known; use arrow, cross or diamond"},
        {"symbol remove symbol-1", "'symbol-1' is no symbol; 'list symbols' shows them"},
        {"camera up",
         "view 'up': not known; give iso, front, back, left, right, top, bottom or a direction such as "
         "-1,-1,-1"},
        {"language xx", "language 'xx': no texts; there are en, de, fr, es and ja"},
        {"export a.docx",
         "'a.docx': its format is not known; use one of .svg, .png, .html, .pdf, .json, .csv, .xlsx, .xml"},
        {"quit", "there are unsaved changes; 'save FILE' first, or end the command with 'discard'"},
        {"redo", "there is nothing to redo"},
        {"undo 3", "there are only 2 changes to undo"},
    };
    const std::string before = Dump();
    for (const Row& row : rows) {
        EXPECT_EQ(Run(std::string("# first\n\n") + row.command),
                  "s:3: command '" + std::string(CommandOf(row.command).name) + "': " + row.complaint + "\n");
    }
    EXPECT_EQ(Dump(), before) << "a command that failed has changed something";
}

TEST_F(ScriptErrors, SayHowACommandGoesOn) {
    EXPECT_EQ(Run("symbol"),
              "s:1: command 'symbol': it goes on with one of add, remove; 'help symbol' tells more\n");
    EXPECT_THAT(Run("item frob 3"), testing::EndsWith("update, not with 'frob'; 'help item' tells more\n"));
}

TEST_F(ScriptErrors, NeedAnOpenIllustration) {
    for (const char* command : {"create", "list parts", "undo", "save a.zrsheet", "item list"}) {
        EXPECT_EQ(Run(command),
                  "s:1: command '" +
                      std::string(command).substr(0, command[0] == 'i' ? 9 : std::string(command).find(' ')) +
                      "': no illustration is open; begin with 'import MODEL' or 'open PROJECT'\n");
    }
}

// What a command has done before it fails is the hard part.
TEST_F(ScriptErrors, LeaveNothingBehind) {
    RunOnRig("create\nmove Pin by 0,1,0\nundo\n");
    const std::string before = Dump();
    Run("create 'No Such Part' leaders=all\n");
    Run("template use label callout-1 callout-2 nought\n");
    Run("manual Pin at 5,5\n");
    EXPECT_EQ(Dump(), before);
    EXPECT_EQ(Run("redo"), "done again: Move Part\n") << "a failure takes what was undone away";
    EXPECT_EQ(m_session->Doc().Leaders(), LeaderChoice::One);
}

TEST_F(ScriptErrors, StopTheScriptUnlessItKeepsGoing) {
    const std::string script = "hide Pin\nfrob\n'open\nshow Pin\n";
    EXPECT_EQ(RunOnRig(script), "s:2: 'frob' is no command; 'help' lists them\n");
    EXPECT_EQ(Run("history"), "Hide Part\n");
    EXPECT_EQ(
        RunOnRig(script, true),
        "s:2: 'frob' is no command; 'help' lists them\n"
        "s:3: the quote ' at character 1 has no partner; close it, or write \\' for the character itself\n");
    EXPECT_EQ(Run("history"), "Hide Part\nShow Part\n");
}

TEST_F(ScriptErrors, QuittingEndsTheScript) {
    EXPECT_EQ(RunOnRig("quit\nfrob\n"), "");
    EXPECT_TRUE(m_session->IsQuitting());
}

}  // namespace
}  // namespace zrsheet
