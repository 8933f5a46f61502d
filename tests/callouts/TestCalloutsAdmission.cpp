#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "callouts/Callouts.h"
#include "tests/callouts/EngineFixture.h"

namespace zrcallouts {
namespace {

class CalloutsAdmission : public EngineFixture {
protected:
    enum class Via { kMain, kInset, kOtherInset, kMainAndInset };

    struct Setup {
        std::optional<unsigned> item;
        Via via = Via::kMain;
        bool isKit = false;
        bool isNumbered = true;
    };

    CalloutPtr Make(const Setup& setup, const Part& part) {
        const auto callout =
            MakeCallout(setup.isNumbered ? m_numbered : m_literal, part, setup.item, nullptr, setup.isKit);
        if (setup.via == Via::kInset) callout->SetInsetAtPos(m_inset, 0);
        if (setup.via == Via::kOtherInset) callout->SetInsetAtPos(m_otherInset, 0);
        if (setup.via == Via::kMainAndInset) {
            Connect(callout, part);
            callout->SetInsetAtPos(m_inset, 1);
        }
        return callout;
    }

    const TemplatePtr m_numbered = MakeTemplate({ItemLabel()});
    const TemplatePtr m_literal = MakeTemplate({Literal("fixed")});
    const InsetPtr m_inset = AddInset(200, 150);
    const InsetPtr m_otherInset = AddInset(200, 150);
};

TEST_F(CalloutsAdmission, OnePartInOnePlaceHasANumberOnce) {
    const struct {
        const char* name;
        Setup there;
        Setup candidate;
        bool allowed;
    } rows[] = {
        {"same item", {5U}, {5U}, false},
        {"another item", {5U}, {6U}, true},
        {"candidate without item", {5U}, {std::nullopt}, false},
        {"existing one without item", {std::nullopt}, {5U}, false},
        {"existing one in an inset", {5U, Via::kInset}, {5U}, true},
        {"candidate in an inset", {5U}, {5U, Via::kInset}, true},
        {"same inset, another item", {5U, Via::kInset}, {6U, Via::kInset}, false},
        {"two insets", {5U, Via::kInset}, {5U, Via::kOtherInset}, true},
        {"existing one in both, candidate in main view", {5U, Via::kMainAndInset}, {5U}, true},
        {"existing one in both, candidate in its inset", {5U, Via::kMainAndInset}, {6U, Via::kInset}, false},
        {"candidate in both", {5U}, {5U, Via::kMainAndInset}, false},
        {"candidate in both, existing one in the inset", {5U, Via::kInset}, {6U, Via::kMainAndInset}, false},
        {"existing kit", {5U, Via::kMain, true}, {5U}, true},
        {"existing kit in the inset", {5U, Via::kInset, true}, {5U, Via::kInset}, true},
        {"candidate is a kit", {5U}, {5U, Via::kMain, true}, true},
        {"existing literal", {5U, Via::kMain, false, false}, {5U}, true},
        {"existing literal in the inset", {5U, Via::kInset, false, false}, {5U, Via::kInset}, true},
        {"candidate is literal", {5U}, {5U, Via::kMain, false, false}, true},
    };
    const auto part = AddPart("part", {0, 0, 0});
    for (const auto& row : rows) {
        const auto there = Make(row.there, part);
        Show(there);
        ASSERT_TRUE(IsShown(there));
        EXPECT_EQ(m_engine->IsAllowed(Make(row.candidate, part)), row.allowed) << row.name;
        EXPECT_TRUE(m_engine->IsAllowed(there)) << row.name << ": it does not stand in its own way";
        Remove(there);
    }
}

TEST_F(CalloutsAdmission, EveryLeaderCountsAndOnlyPartsWithAnIdDo) {
    const auto part = AddPart("part", {0, 0, 0});
    const auto away = AddPart("away", {5, 0, 0});
    AddCallout(m_numbered, part, 5);
    const auto second = MakeCallout(m_numbered, away, 5);
    EXPECT_TRUE(m_engine->IsAllowed(second));
    ConnectWaiting(second, "part");
    EXPECT_FALSE(m_engine->IsAllowed(second)) << "a leader to a part that is not loaded counts too";
    EXPECT_FALSE(m_engine->IsAllowed(nullptr));
    EXPECT_TRUE(m_engine->IsAllowed(MakeFreeCallout(m_numbered, 5)));
    // Parts outside the product structure share the empty id, and do not stand in each other's way.
    const du::SmartPtr<zrk::Instance> bare(
        new zrk::Instance(du::Symbol("bare"), "bare", MakeBox("bare"), dg::Location()));
    const Part nameless{nullptr, bare, m_scene->CreateShapeInstance(bare)};
    AddCallout(m_numbered, nameless, 5);
    EXPECT_TRUE(m_engine->IsAllowed(MakeCallout(m_numbered, nameless, 5)));

    const du::SmartPtr<Callouts> listless(new Callouts);
    listless->AddToMap(MakeCallout(m_numbered, part, 5));
    EXPECT_TRUE(listless->IsAllowed(MakeCallout(m_numbered, part, 5)));
}

TEST_F(CalloutsAdmission, FlatOrderFollowsTheListByExchangingPairs) {
    const auto part = AddPart("part", {0, 0, 0});
    const std::vector<unsigned> items{AddItem({}), AddItem({}), AddItem({}), AddItem({})};
    // Callouts are named by the place of their item in the list, '-' for none; a letter tells equal ones
    // apart.
    const std::pair<const char*, const char*> rows[] = {
        {"3 1 2", "1 2 3"},
        {"3 2 1 0", "0 1 2 3"},
        {"3 - 0", "3 - 0"},
        {"3 0 - 1", "0 3 - 1"},
        {"3 0 1 -", "0 3 1 -"},
        {"1a 1b 0c", "0c 1b 1a"},
        {"1a 1b", "1a 1b"},
        {"-", "-"},
        {"2", "2"},
        {"", ""},
    };
    for (const auto& [before, after] : rows) {
        CalloutVec callouts;
        std::istringstream names(before);
        for (std::string name; names >> name;) {
            const auto item = name == "-" ? std::nullopt : std::optional(items.at(std::stoul(name)));
            callouts.push_back(MakeCallout(m_numbered, part, item));
            callouts.back()->SetText(du::Symbol(name), false);
        }
        CalloutVec unlisted = callouts;
        du::SmartPtr<Callouts>(new Callouts)->Sort(unlisted);
        EXPECT_EQ(unlisted, callouts) << "without item list nothing is ordered";
        m_engine->Sort(callouts);
        std::string sorted;
        for (const auto& callout : callouts) sorted += (sorted.empty() ? "" : " ") + Text(callout);
        EXPECT_EQ(sorted, after) << before;
    }
}

TEST_F(CalloutsAdmission, HierarchicalOrderIsNoOrderingAndDependsOnTheInput) {
    zrk::illustration::ItemsList::Numbering numbering;
    numbering.hierarchical = true;
    Items().SetNumbering(numbering);
    const auto first = AddAssembly("first");
    const auto inner = AddAssembly("inner", false, &first);
    const auto second = AddAssembly("second");
    const auto deep = AddPart("deep", {0, 0, 0}, &inner);
    const auto below = AddPart("below", {1, 0, 0}, &first);
    const auto other = AddPart("other", {2, 0, 0}, &second);
    const auto late = AddPart("late", {3, 0, 0}, &first);
    const auto make = [this](const Part& part) { return MakeCallout(m_numbered, part, AddItem({part})); };
    AddItem({first});            // [0]
    AddItem({inner});            // [0 1]
    const auto a = make(deep);   // [0 1 2]
    const auto b = make(below);  // [0 3]
    AddItem({second});           // [4]
    const auto c = make(other);  // [4 5]
    const auto d = make(late);   // [0 6]
    const struct {
        const char* name;
        CalloutVec before;
        CalloutVec after;
    } rows[] = {
        {"the deeper one goes behind at the first equal level", {a, b}, {b, a}},
        {"and before where a later level is smaller", {b, a}, {a, b}},
        {"deeper, but smaller at every level", {a, c}, {a, c}},
        {"in order", {b, c}, {b, c}},
        {"out of order", {c, b}, {b, c}},
        {"a smaller first level does not decide", {d, c}, {c, d}},
        {"a greater first level does", {c, d}, {d, c}},
        {"same parent", {d, b}, {b, d}},
    };
    for (const auto& row : rows) {
        CalloutVec callouts = row.before;
        m_engine->Sort(callouts);
        EXPECT_EQ(callouts, row.after) << row.name;
    }
}

}  // namespace
}  // namespace zrcallouts
