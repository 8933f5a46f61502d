#include "app/check/CompletenessCheck.h"

#include <nlohmann/json.hpp>

#include "tests/app/command/ScriptFixture.h"

namespace zrsheet {
namespace {

class Completeness : public ScriptFixture {
protected:
    /// "kind where" of each finding.
    std::vector<std::string> Findings() {
        std::vector<std::string> told;
        m_session->Doc().Settle();
        for (const Finding& finding : CheckCompleteness(m_session->OpenedProject()))
            told.push_back(std::string(WordFor(finding.kind)) + " " + finding.where);
        return told;
    }
};

struct Row {
    const char* script;
    std::vector<std::string> findings;
};

TEST_F(Completeness, TellsEveryKindOfFindingWhereItIs) {
    const std::vector<Row> rows{
        {"create", {}},
        {"create Pin", {"item-without-callout item 1 (#1, Left Wedge)"}},
        {"create\nitem leave 2 Pin", {"part-without-item /Pin"}},
        {"create\nitem leave 1 'Left Wedge'", {"part-without-item /Frame/Left Wedge"}},
        {"create leaders=each\nitem leave 1 'Left Wedge'", {"part-without-item /Frame/Left Wedge"}},
        {"create leaders=each\nitem join 2 'Left Wedge'", {}},
        {"item leave 1 'Left Wedge'\nremove 'Left Wedge'\ncreate", {}},
        {"import rig.gltf hierarchical discard\ncreate\ncallout remove 1.1",
         {"item-without-callout item 1.1 (#2, Left Wedge)"}},
        {"create\nhide Pin", {"callout-without-leader callout-2"}},
        {"create\nremove Pin", {"leader-to-removed-part callout-2 to /Pin"}},
        {"create\ncombine 1 2\nhide Pin", {}},
        {"template define name '{name}'\ntemplate use name\ncreate Pin",
         {"item-without-callout item 1 (#1, Left Wedge)"}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(RunOnRig(row.script).find("s:"), std::string::npos) << row.script;
        EXPECT_EQ(Findings(), row.findings) << row.script;
    }
}

// What no command leaves behind comes with projects that others have written.
TEST_F(Completeness, TellsWhatIsWrongInTheListItself) {
    RunOnRig("create\n");
    Document& document = m_session->Doc();
    document.ItemList().AddItem({}, "2", true, true, nullptr);
    document.ItemList().AddItem({}, "2", false, true, nullptr);
    document.FindCallouts("callout-1").front()->RemoveItemId();
    EXPECT_EQ(Findings(), (std::vector<std::string>{
                              "item-without-parts item 2 (#3)", "duplicate-label item 2 (#3)",
                              "item-without-parts item 2 (#4)", "callout-without-item callout-text-1"}));
}

TEST_F(Completeness, TellsWhatTheModelHasLost) {
    RunOnRig("create\nsave a.zrsheet\n");
    std::string text = test::ReadFile("rig.gltf");
    Write("rig.gltf", text.replace(text.find("[0, 3]"), 6, "[0]"));
    Run("open a.zrsheet\n");
    EXPECT_EQ(Findings(), (std::vector<std::string>{"item-with-lost-part item 2 (#2), /Pin",
                                                    "leader-to-lost-part callout-2 to /Pin"}));
    const auto findings = nlohmann::json::parse(FindingsJson(CheckCompleteness(m_session->OpenedProject())));
    EXPECT_EQ(findings["schema"], 1);
    EXPECT_EQ(findings["findings"][1]["callout"], "callout-2");
    EXPECT_EQ(findings["findings"][1]["part"], "/Pin");
    EXPECT_EQ(findings["findings"][0]["item"], 2);
    EXPECT_FALSE(findings["findings"][1].contains("item"));
}

// Covered is what the picture covers, so the answer is that of the view.
TEST_F(Completeness, TellsCoveredLeadersUnlessAllAreDashed) {
    RunOnRig("create 'Left Wedge'\ncreate Pin\ncamera top\n");
    EXPECT_EQ(Findings(), (std::vector<std::string>{"hidden-anchor callout-1 to /Frame/Left Wedge"}));
    Run("hidden on\n");
    EXPECT_EQ(Findings(), std::vector<std::string>());
}

// An assembly that is an item stands for its parts, unless the list goes on to one of them.
TEST_F(Completeness, LetsAssembliesStandForTheirParts) {
    RunOnRig("item clear\nitem add Pin\ncreate\n");
    zritemlist::ItemList& list = m_session->Doc().ItemList();
    const unsigned frame =
        list.AddInstance(m_session->Doc().FindInstances({"/Frame"}).front(), nullptr, true, "F");
    list.SetItemized(frame, false, nullptr);
    EXPECT_EQ(Findings(), std::vector<std::string>());
    list.AddInstance(m_session->Doc().FindInstances({"Left Wedge"}).front(), nullptr, true, "L");
    EXPECT_EQ(Findings(), (std::vector<std::string>{"item-without-callout item L (#5, Left Wedge)",
                                                    "part-without-item /Frame/Right Wedge"}));
}

}  // namespace
}  // namespace zrsheet
