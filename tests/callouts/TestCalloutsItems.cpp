#include <array>
#include <set>
#include <string>
#include <utility>

#include "callouts/Callouts.h"
#include "tests/callouts/EngineFixture.h"
#include "tests/support/AnnotationLog.h"
#include "zrk/operation/Operation.h"

namespace zrcallouts {
namespace {

using SbomSet = Callouts::SbomSet;

class CalloutsItems : public ThreeParts {
protected:
    CalloutsItems() { m_scene->RegisterObserver(m_journal); }

    CombinedPtr Numbered(const std::vector<std::pair<Part, unsigned>>& members) {
        CalloutVec callouts;
        for (const auto& [part, id] : members) callouts.push_back(MakeCallout(m_numbered, part, id));
        return Combine(callouts);
    }

    const unsigned m_seven = AddItem({m_a}, "7");
    const unsigned m_eight = AddItem({m_b}, "8");
    const unsigned m_nine = AddItem({m_c}, "9");
    const du::SmartPtr<zrtest::AnnotationLog> m_journal{new zrtest::AnnotationLog};
};

TEST_F(CalloutsItems, ARemovedItemTakesItsCalloutsAlongAndShrinksCombinedOnes) {
    AddCallout(m_numbered, m_a, m_seven);
    AddCallout(m_numbered, m_b, m_eight);
    Show(Numbered({{m_a, m_seven}, {m_b, m_eight}}));
    Show(Numbered({{m_c, m_nine}, {m_a, m_seven}}));
    Show(Numbered({{m_a, m_seven}, {m_b, m_eight}, {m_c, m_nine}}));
    ASSERT_EQ(ShownTexts(), "7|8|7, 8|9, 7|7, 8, 9");
    m_journal->Take();
    ASSERT_TRUE(Items().RemoveItem(m_seven));
    EXPECT_EQ(ShownTexts(), "8|8, 9|8|9");
    EXPECT_EQ(m_journal->Take(), "---++") << "members are added after all combined callouts are gone";
    EXPECT_EQ(Filed(m_c).size(), 2U) << "the triple's last member and the callout that was left over";
    EXPECT_FALSE(Undo());
}

TEST_F(CalloutsItems, ARemovalUnderAnOperationCanBeUndone) {
    const auto seven = AddCallout(m_numbered, m_a, m_seven);
    const auto pair = Numbered({{m_a, m_seven}, {m_b, m_eight}});
    Show(pair);
    const auto kept = pair->GetCalloutVec()[1];
    const auto operation = MakeOperation();
    m_engine->OnItemRemoved(m_seven, operation);
    zrk::RecordOperation(operation);
    const auto shown = [&] { return std::array{IsShown(seven), IsShown(pair), IsShown(kept)}; };
    const auto removed = std::array{false, false, true};
    EXPECT_EQ(shown(), removed);
    ASSERT_TRUE(Undo());
    EXPECT_EQ(shown(), (std::array{true, true, false}));
    EXPECT_EQ(OfItem(m_seven), CalloutVec{seven});
    ASSERT_TRUE(Redo());
    EXPECT_EQ(shown(), removed);
}

TEST_F(CalloutsItems, CalloutsThatASavedViewRefersToAreDeletedWhole) {
    const auto saved = MakeCallout(m_numbered, m_a, m_seven);
    const auto other = MakeCallout(m_numbered, m_b, m_eight);
    const auto pair = Numbered({{m_a, m_seven}, {m_b, m_eight}});
    for (const auto& callout : {saved, other, CalloutPtr(pair)}) m_annoSet->AddReferencedAnnotation(callout);
    const auto operation = MakeOperation();
    m_engine->OnItemRemoved(m_seven, operation);
    EXPECT_EQ(m_journal->Take(), "+-+-");
    EXPECT_EQ(pair->GetCount(), 2U);
    for (const auto& callout : {saved, CalloutPtr(pair)}) {
        EXPECT_FALSE(IsShown(callout));
        EXPECT_FALSE(m_annoSet->IsReferencedAnnotation(callout));
    }
    EXPECT_TRUE(m_annoSet->IsReferencedAnnotation(other));
    EXPECT_TRUE(operation->IsRecordable());
}

TEST_F(CalloutsItems, ASavedCalloutThatLeadsNowhereLeavesNoItemHighlighted) {
    const auto lost = MakeCallout(m_numbered, m_a, m_seven);
    lost->RemoveLeaderAtPos(0);
    m_annoSet->AddReferencedAnnotation(lost);
    m_engine->OnItemRemoved(m_seven, MakeOperation());
    EXPECT_FALSE(Items().IsIndicated(m_seven));
}

TEST_F(CalloutsItems, AClearedListTakesEveryNumberedCalloutAlong) {
    AddCallout(MakeTemplate({Literal("plain"), Reference("Part", "")}), m_a);
    m_view->SetDirty(false);
    m_engine->OnListCleared(nullptr);
    EXPECT_FALSE(m_view->IsDirty());
    AddCallout(m_numbered, m_a, m_seven);
    Show(Numbered({{m_b, m_eight}, {m_c, m_nine}}));
    m_view->SetDirty(false);
    const auto operation = MakeOperation();
    m_engine->OnListCleared(operation);
    zrk::RecordOperation(operation);
    EXPECT_TRUE(m_view->IsDirty());
    EXPECT_EQ(ShownTexts(), "plain");
    std::set<unsigned> ids;
    m_engine->GetItemdIds(ids);
    EXPECT_TRUE(ids.empty());
    ASSERT_TRUE(Undo());
    EXPECT_EQ(ShownTexts(), "plain|7|8, 9");
}

TEST_F(CalloutsItems, ANewInstanceOfAnItemGetsALeaderOnItsFirstCallout) {
    const CalloutVec callouts{AddCallout(m_numbered, m_a, m_seven), AddCallout(m_numbered, m_a, m_seven),
                              AddCallout(m_numbered, m_b, m_eight)};
    ASSERT_EQ(OfItem(m_seven), (CalloutVec{callouts[0], callouts[1]}));
    // Leaders of each callout, and how many of them are drawn.
    const auto connect = [&](const Part& part) {
        m_engine->UpdateItemGroupCalloutLeaders(m_seven, SbomSet{part.sbom}, {}, nullptr);
        std::string counts;
        for (const auto& callout : callouts) {
            counts += std::to_string(callout->GetLeaderLineCount(true)) + "/" +
                      std::to_string(callout->GetDrawnLeaders().size()) + " ";
        }
        return counts;
    };
    EXPECT_EQ(connect(m_c), "2/1 1/1 1/1 ") << "new leaders are collapsed";
    EXPECT_EQ(callouts[0]->GetShapeInstanceAtPos(1).get(), m_c.shape.get());
    EXPECT_FALSE(callouts[0]->GetAssemblyInstanceAtPos(1)) << "the part stands for itself";
    EXPECT_EQ(Filed(m_c), CalloutVec{callouts[0]});
    EXPECT_EQ(connect(m_c), "2/1 2/1 1/1 ") << "the first has the leader already, so the next one gets it";
    m_engine->SetCombineForSamePart(true);
    EXPECT_EQ(connect(AddPart("spare", {0, 5, 0})), "3/3 2/1 1/1 ") << "combined parts show all leaders";
}

TEST_F(CalloutsItems, ConnectingIsAStepThatUndoTakesFromAllCalloutsOfTheItem) {
    const auto first = AddCallout(m_numbered, m_a, m_seven);
    const auto second = MakeCallout(m_numbered, m_a, m_seven);
    Connect(second, m_c);
    Show(second);
    const auto leaders = [&] {
        return std::pair(first->GetLeaderLineCount(true), second->GetLeaderLineCount(true));
    };
    const auto operation = MakeOperation();
    m_engine->UpdateItemGroupCalloutLeaders(m_seven, SbomSet{m_b.sbom, m_c.sbom}, {}, operation);
    zrk::RecordOperation(operation);
    ASSERT_EQ(leaders(), std::pair(3U, 2U));
    ASSERT_TRUE(Undo());
    EXPECT_EQ(leaders(), std::pair(1U, 1U));
    EXPECT_EQ(Filed(m_b), CalloutVec{first}) << "only the leader goes, the callout stays filed";
    ASSERT_TRUE(Redo());
    EXPECT_EQ(leaders(), std::pair(3U, 1U));
}

}  // namespace
}  // namespace zrcallouts
