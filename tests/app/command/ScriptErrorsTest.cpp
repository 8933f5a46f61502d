#include "tests/app/command/ScriptFixture.h"

namespace zrsheet {
namespace {

using ScriptErrors = ScriptFixture;

struct Row {
    const char* command;
    const char* complaint;
};

TEST_F(ScriptErrors, SayWhatIsWrongAndWhatToDo) {
    RunOnRig("create\ninset add of 10,10 at 50,50\n");
    const std::vector<Row> rows{
        {"frob", "'frob' is no command; 'help' lists them"},
        {"item frob 3",
         "command 'item': it goes on with one of add, clear, join, kit, leave, list, lock, number, remove, "
         "rename, tag, "
         "unlock, update, "
         "not with "
         "'frob'; 'help item' tells more"},
        {"symbol", "command 'symbol': it goes on with one of add, remove; 'help symbol' tells more"},
        {"move Pin", "command 'move': 'by' is missing; usage: move PART... by X,Y,Z"},
        {"move by 1,2,3", "command 'move': PART is missing; usage: move PART... by X,Y,Z"},
        {"move 'by' by 1,2,3",
         "command 'move': no part matches 'by'; patterns are names or paths such as 'Bolt*' or '/Pump/*', "
         "and 'list "
         "parts' shows them"},
        {"move Pin by 1,2",
         "command 'move': '1,2' is no X,Y,Z, which is three numbers such as 0,0.5,-2; usage: move PART... by "
         "X,Y,Z"},
        {"move Pin by 1,2,nan",
         "command 'move': '1,2,nan' is no X,Y,Z, which is three numbers such as 0,0.5,-2; usage: move "
         "PART... by X,Y,Z"},
        {"move Pin by 1,2,3,4",
         "command 'move': '1,2,3,4' is no X,Y,Z, which is three numbers such as 0,0.5,-2; usage: move "
         "PART... by "
         "X,Y,Z"},
        {"move Pin by 1,2,3 now", "command 'move': 'now' is too much; usage: move PART... by X,Y,Z"},
        {"hidden maybe", "command 'hidden': 'maybe' is none of off, on; usage: hidden on|off"},
        {"hidden", "command 'hidden': one of off, on is missing; usage: hidden on|off"},
        {"align sideways *",
         "command 'align': 'sideways' is no MODE; 'help align' lists them; usage: align MODE CALLOUT..."},
        {"align 10 *",
         "command 'align': '10' is no MODE; 'help align' lists them; usage: align MODE CALLOUT..."},
        {"align left 1", "command 'align': these are too few callouts; lining up needs 2, distributing 3"},
        {"label set 9 x",
         "command 'label set': no callout is called '9'; 'list callouts' shows their ids and labels"},
        {"label set * x",
         "command 'label set': '*' calls 2 callouts; name one by its id, which 'list callouts' shows"},
        {"label move * to 5,5",
         "command 'label move': several labels have no room at one place; move them 'by' X,Y"},
        {"combine 1", "command 'combine': one callout alone cannot be combined; name two or more"},
        {"dissolve 1", "command 'dissolve': '1' is no combined callout"},
        {"item remove Z", "command 'item remove': 'Z' is no item; 'list items' shows their labels and ids"},
        {"item rename 1 2", "command 'item rename': there is an item '2' already; choose another label"},
        {"item number 1 2",
         "command 'item number': item '1' cannot have the number 2: another item has it, or the item has a "
         "label of "
         "its own ('item rename 1 \"\"' takes that away)"},
        {"item number 1 0",
         "command 'item number': '0' is no NUMBER, which is a whole number from 1 to 999999; usage: item "
         "number "
         "ITEM|flat|hierarchical [NUMBER] [prefix=TEXT] [separator=TEXT] [start=N] [step=N] [digits=N] "
         "[letters=on|off] [by=structure|name|place] [from=CORNER]"},
        {"item add Pin",
         "command 'item add': all of these parts are items already; 'item join' moves them to another"},
        {"template use nought",
         "command 'template use': there is no template 'nought'; 'template define' makes one"},
        {"template define label x",
         "command 'template define': there is a template 'label' already; change it with 'template edit'"},
        {"template edit label '{nonsense}'",
         "command 'template edit': template '{nonsense}': {nonsense} is not known; use {item}, {quantity}, "
         "{tag}, "
         "{name}, {property:NAME}, {parent:NAME}, {root:NAME}, {file:NAME} or {line}, and {{ for a brace"},
        {"inset move inset-2 by 1,1",
         "command 'inset move': 'inset-2' is no inset; 'list insets' shows them"},
        {"inset factor inset-1 0",
         "command 'inset factor': a factor is above 0 and up to 1000; usage: inset factor INSET FACTOR"},
        {"inset add of 1,1 at 2,2 radius=big",
         "command 'inset add': 'big' is no number for radius; usage: inset add of X,Y at X,Y [radius=R] "
         "[factor=F]"},
        {"symbol add star at 0,0,0",
         "command 'symbol add': symbol 'star': not known; use arrow, cross or diamond"},
        {"symbol remove symbol-1",
         "command 'symbol remove': 'symbol-1' is no symbol; 'list symbols' shows them"},
        {"camera up",
         "command 'camera': view 'up': not known; give iso, front, back, left, right, top, bottom or a "
         "direction such "
         "as -1,-1,-1"},
        {"camera zoom 0", "command 'camera zoom': a factor is from 0.001 to 1000; usage: camera zoom FACTOR"},
        {"resize 10,10",
         "command 'resize': a page is from 400,300 to 20000,20000 pixels large; usage: resize WIDTH,HEIGHT"},
        {"background mauve",
         "command 'background': 'mauve' is no COLOR; use white, black, gray, blue or six digits such as "
         "f0e8d0; usage: "
         "background COLOR [COLOR]"},
        {"language xx", "command 'language': language 'xx': no texts; there are en, de, fr, es and ja"},
        {"create leaders=some",
         "command 'create': 'some' is no choice of leaders; use one, all or each; usage: create [PART...] "
         "[leaders=one|all|each]"},
        {"export a.docx",
         "command 'export': 'a.docx': its format is not known; use one of .svg, .png, .html, .pdf, .json, "
         ".csv, .xlsx, .xml"},
        {"save", "command 'save': the illustration has no file yet; give it one with 'save FILE.zrsheet'"},
        {"quit",
         "command 'quit': there are unsaved changes; 'save FILE' first, or end the command with 'discard'"},
        {"import rig.gltf",
         "command 'import': there are unsaved changes; 'save FILE' first, or end the command with 'discard'"},
        {"import nought.glb discard", "command 'import': nought.glb: there is no such file; check its name"},
        {"redo", "command 'redo': there is nothing to redo"},
        {"undo 3", "command 'undo': there are only 2 changes to undo"},
        {"move Pin 1,2,3", "command 'move': 'by' is missing; usage: move PART... by X,Y,Z"},
        {"help frob", "command 'help': 'frob' is no command; 'help' lists them"},
    };
    const std::string before = Dump();
    for (const Row& row : rows) {
        EXPECT_EQ(Run(std::string("# first\n\n") + row.command), std::string("s:3: ") + row.complaint + "\n");
    }
    EXPECT_EQ(Dump(), before) << "a command that failed has changed something";
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
