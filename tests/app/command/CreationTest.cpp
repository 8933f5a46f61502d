#include "tests/app/command/ScriptFixture.h"

namespace zrsheet {
namespace {

class Creation : public ScriptFixture {
protected:
    /// The last line that the script prints.
    std::string LastLine(const std::string& script) {
        std::string text = Run("import rig.gltf discard\n" + script);
        text.pop_back();
        return text.substr(text.rfind('\n') + 1);
    }
};

struct Row {
    const char* script;
    const char* lastLine;
};

TEST_F(Creation, NeverDuplicates) {
    for (const char* first : {"one", "all", "each"}) {
        const std::string kept = std::string(first) == "each" ? "3" : "2";
        for (const char* second : {"one", "all", "each"}) {
            EXPECT_EQ(LastLine(std::string("create leaders=") + first + "\ncreate leaders=" + second),
                      "0 callouts created, " + kept + " kept")
                << first << " " << second;
        }
    }
    const std::vector<Row> rows{
        {"template define n '{name}'\ntemplate use n\ncreate\ncreate", "0 callouts created, 2 kept"},
        {"template define n '{name}'\ncreate\ntemplate use n\ncreate\ncreate", "0 callouts created, 4 kept"},
        {"template define n 'No. {item}'\ncreate\ntemplate use n\ncreate", "0 callouts created, 2 kept"},
        {"create Pin\ncreate items 1 2\ncreate items 1 2", "0 callouts created, 2 kept"},
        {"symbol add cross at 0,0,0\ncreate symbols\ncreate symbols", "0 callouts created, 1 kept"},
        {"create\nremove Pin\ncreate", "0 callouts created, 1 kept, 1 orphaned ('check' names them)"},
        {"create\nitem leave 1 'Left Wedge'\nitem add 'Left Wedge'\ncreate", "1 callout created, 2 kept"},
        {"create 'items'",
         "s:2: command 'create': no part matches 'items'; patterns are names or paths such as "
         "'Bolt*' or '/Pump/*', and 'list parts' shows them"},
    };
    for (const Row& row : rows) EXPECT_EQ(LastLine(row.script), row.lastLine) << row.script;
}

// With leaders to all, what is new shows in the balloon that is there; a part that is hidden is not led to.
TEST_F(Creation, LetsSharedBalloonsGainLeaders) {
    LastLine("create 'Left Wedge' leaders=all\nhide 'Right Wedge'\ncreate Pin\ncreate");
    EXPECT_EQ(m_session->Doc().FindCallouts("1").front()->GetLeaderLineCount(true), 1U);
    Run("show 'Right Wedge'\ncreate\n");
    EXPECT_EQ(m_session->Doc().FindCallouts("1").front()->GetDrawnLeaders().size(), 2U);
    Run("undo\n");
    EXPECT_EQ(m_session->Doc().FindCallouts("1").front()->GetLeaderLineCount(true), 1U);
}

TEST_F(Creation, CallsOutWhatAChangedModelBrings) {
    const std::string whole = test::ReadFile("rig.gltf");
    std::string without = whole;
    Write("rig.gltf", without.replace(without.find("[0, 3]"), 6, "[0]"));
    RunOnRig("create leaders=all\nlabel move 1 to 50,50\nsave a.zrsheet\n");
    Write("rig.gltf", whole);
    EXPECT_TRUE(Run("open a.zrsheet\nitem add Pin\ncreate\n").ends_with("1 callout created, 1 kept\n"));
    EXPECT_NE(Run("list callouts").find("\ncallout-1  1      50,50 "), std::string::npos) << m_out.str();
}

TEST_F(Creation, ResetsWhatTheAuthorHadNoHandIn) {
    const std::vector<Row> rows{
        {"", "2 callouts removed\n2 callouts created\n"},
        {"label set 1 x", "1 callout removed\n1 callout created, 1 kept\n"},
        {"label move 1 by 3,3", "1 callout removed\n1 callout created, 1 kept\n"},
        {"label move 1 by 3,3\nlayout", "1 callout removed\n1 callout created, 1 kept\n"},
        {"label move 1 by 3,3\nlayout *", "2 callouts removed\n2 callouts created\n"},
        {"label move 1 by 3,3\nundo", "2 callouts removed\n2 callouts created\n"},
        {"align left *", "0 callouts removed\n0 callouts created, 2 kept\n"},
        {"callout remove 2\nmanual Pin at 20,20", "1 callout removed\n1 callout created, 1 kept\n"},
        {"combine 1 2", "0 callouts removed\n0 callouts created, 1 kept\n"},
        {"label move 1 by 3,3\nsave a.zrsheet\nopen a.zrsheet",
         "1 callout removed\n1 callout created, 1 kept\n"},
    };
    for (const Row& row : rows) {
        RunOnRig(std::string("create\n") + row.script);
        EXPECT_EQ(Run("reset"), row.lastLine) << row.script;
    }
    RunOnRig("create\n");
    EXPECT_EQ(Run("reset Pin"), "1 callout removed\n1 callout created, 1 kept\n");
}

// What they count as, and what is none, golden scenes tell.
TEST_F(Creation, LeavesNothingOfWeldsThatAreTakenBack) {
    RunOnRig("create leaders=all\n");
    const std::string before = Run("list items\nlist callouts");
    Run("weld on Frame\ncreate\nweld off Frame\nundo 3");
    EXPECT_EQ(Run("list items\nlist callouts"), before);
}

}  // namespace
}  // namespace zrsheet
