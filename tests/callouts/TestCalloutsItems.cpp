#include <functional>
#include <set>
#include <string>
#include <utility>

#include "callouts/Callouts.h"
#include "tests/callouts/EngineFixture.h"
#include "zrk/operation/Operation.h"
#include "zrk/scene/SceneObserver.h"

namespace zrcallouts {
namespace {

using SbomSet = Callouts::SbomSet;

/// Writes down which annotations enter and leave the scene.
class Journal : public zrk::SceneObserver {
public:
    ~Journal() override = default;
    void OnAnnotationAdded(const du::SmartPtr<zrk::Annotation>& annotation) override {
        Write('+', annotation);
    }
    void OnAnnotationRemoved(const du::SmartPtr<zrk::Annotation>& annotation) override {
        Write('-', annotation);
    }

    std::string m_signs;
    std::vector<du::SmartPtr<zrk::Annotation>> m_annotations;

private:
    void Write(char sign, const du::SmartPtr<zrk::Annotation>& annotation) {
        m_signs += sign;
        m_annotations.push_back(annotation);
    }
};

class CalloutsItems : public EngineFixture {
protected:
    CalloutsItems()
        : m_a(AddPart("A", {-5, 0, 0})),
          m_b(AddPart("B", {0, 0, 0})),
          m_c(AddPart("C", {5, 0, 0})),
          m_seven(AddItem({m_a}, "7")),
          m_eight(AddItem({m_b}, "8")),
          m_nine(AddItem({m_c}, "9")) {
        m_scene->RegisterObserver(m_journal);
    }

    CombinedPtr Combine(const std::vector<std::pair<Part, unsigned>>& members) {
        CalloutVec callouts;
        for (const auto& [part, id] : members) callouts.push_back(MakeCallout(m_numbered, part, id));
        return new zrannotations::CombinedCallout(callouts);
    }

    const Part m_a;
    const Part m_b;
    const Part m_c;
    const unsigned m_seven;
    const unsigned m_eight;
    const unsigned m_nine;
    const TemplatePtr m_numbered = MakeTemplate({ItemLabel()});
    const du::SmartPtr<Journal> m_journal{new Journal};
};

TEST_F(CalloutsItems, ARemovedItemTakesItsCalloutsAlongAndShrinksCombinedOnes) {
    const auto seven = AddCallout(m_numbered, m_a, m_seven);
    const auto eight = AddCallout(m_numbered, m_b, m_eight);
    const auto triple = Combine({{m_a, m_seven}, {m_b, m_eight}, {m_c, m_nine}});
    const auto pair = Combine({{m_a, m_seven}, {m_b, m_eight}});
    const auto otherPair = Combine({{m_c, m_nine}, {m_a, m_seven}});
    const auto kept = pair->GetCalloutVec()[1];
    const auto otherKept = otherPair->GetCalloutVec()[0];
    for (const auto& combined : {pair, otherPair, triple}) Show(combined);
    ASSERT_EQ(Text(triple), "7, 8, 9");
    m_journal->m_signs.clear();

    ASSERT_TRUE(Items().RemoveItem(m_seven));

    EXPECT_FALSE(IsShown(seven));
    EXPECT_TRUE(IsShown(eight));
    EXPECT_FALSE(IsShown(pair));
    EXPECT_FALSE(IsShown(otherPair));
    EXPECT_TRUE(IsShown(kept));
    EXPECT_TRUE(IsShown(otherKept));
    EXPECT_EQ(Text(kept), "8");
    EXPECT_EQ(Text(otherKept), "9");
    EXPECT_TRUE(IsShown(triple));
    EXPECT_EQ(Text(triple), "8, 9");
    EXPECT_EQ(m_journal->m_signs, "---++") << "members are added after all combined callouts are gone";
    EXPECT_EQ(Filed(m_c).size(), 2U) << "the triple's last member and the callout that was left over";
    EXPECT_FALSE(m_scene->GetHistory().Undo());
}

TEST_F(CalloutsItems, ARemovalUnderAnOperationCanBeUndone) {
    const auto seven = AddCallout(m_numbered, m_a, m_seven);
    const auto pair = Combine({{m_a, m_seven}, {m_b, m_eight}});
    Show(pair);
    const auto kept = pair->GetCalloutVec()[1];
    const auto operation = MakeOperation();
    m_engine->OnItemRemoved(m_seven, operation);
    zrk::RecordOperation(operation);
    EXPECT_FALSE(IsShown(seven));
    EXPECT_TRUE(IsShown(kept));
    ASSERT_TRUE(m_scene->GetHistory().Undo());
    EXPECT_TRUE(IsShown(seven));
    EXPECT_TRUE(IsShown(pair));
    EXPECT_FALSE(IsShown(kept));
    EXPECT_EQ(OfItem(m_seven), CalloutVec{seven});
    ASSERT_TRUE(m_scene->GetHistory().Redo());
    EXPECT_FALSE(IsShown(seven));
    EXPECT_TRUE(IsShown(kept));
}

TEST_F(CalloutsItems, CalloutsThatASavedViewRefersToAreDeletedWhole) {
    const auto saved = MakeCallout(m_numbered, m_a, m_seven);
    const auto other = MakeCallout(m_numbered, m_b, m_eight);
    const auto pair = Combine({{m_a, m_seven}, {m_b, m_eight}});
    for (const auto& callout : {saved, other, CalloutPtr(pair)}) m_annoSet->AddReferencedAnnotation(callout);
    const auto operation = MakeOperation();
    m_engine->OnItemRemoved(m_seven, operation);
    EXPECT_EQ(m_journal->m_signs, "+-+-");
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
    const auto plain = AddCallout(MakeTemplate({Literal("x")}), m_a);
    m_view->SetDirty(false);
    m_engine->OnListCleared(nullptr);
    EXPECT_FALSE(m_view->IsDirty());
    const auto seven = AddCallout(m_numbered, m_a, m_seven);
    const auto pair = Combine({{m_b, m_eight}, {m_c, m_nine}});
    Show(pair);
    m_view->SetDirty(false);
    const auto operation = MakeOperation();
    m_engine->OnListCleared(operation);
    zrk::RecordOperation(operation);
    EXPECT_TRUE(m_view->IsDirty());
    EXPECT_FALSE(IsShown(seven));
    EXPECT_FALSE(IsShown(pair));
    EXPECT_TRUE(IsShown(plain));
    std::set<unsigned> ids;
    m_engine->GetItemdIds(ids);
    EXPECT_TRUE(ids.empty());
    ASSERT_TRUE(m_scene->GetHistory().Undo());
    EXPECT_TRUE(IsShown(seven));
    EXPECT_TRUE(IsShown(pair));
}

TEST_F(CalloutsItems, ANewInstanceOfAnItemGetsALeaderOnItsFirstCallout) {
    const auto first = AddCallout(m_numbered, m_a, m_seven);
    const auto second = AddCallout(m_numbered, m_a, m_seven);
    ASSERT_EQ(OfItem(m_seven), (CalloutVec{first, second}));
    const auto eight = AddCallout(m_numbered, m_b, m_eight);
    const auto connect = [this](const Part& part) {
        m_engine->UpdateItemGroupCalloutLeaders(m_seven, SbomSet{part.sbom}, {}, nullptr);
    };
    connect(m_c);
    ASSERT_EQ(first->GetLeaderLineCount(true), 2U);
    EXPECT_EQ(second->GetLeaderLineCount(true), 1U);
    EXPECT_EQ(first->GetShapeInstanceAtPos(1).get(), m_c.shape.get());
    EXPECT_FALSE(first->GetAssemblyInstanceAtPos(1)) << "the part stands for itself";
    EXPECT_EQ(Filed(m_c), CalloutVec{first});
    EXPECT_EQ(first->GetDrawnLeaders().size(), 1U) << "new leaders are collapsed";
    connect(m_c);
    EXPECT_EQ(first->GetLeaderLineCount(true), 2U);
    EXPECT_EQ(second->GetLeaderLineCount(true), 2U)
        << "the first has the leader already, so the next one gets it";

    m_engine->SetCombineForSamePart(true);
    const auto spare = AddPart("spare", {0, 5, 0});
    connect(spare);
    EXPECT_EQ(first->GetDrawnLeaders().size(), 3U) << "combined parts show all their leaders";
    EXPECT_EQ(second->GetDrawnLeaders().size(), 1U);
    EXPECT_EQ(eight->GetLeaderLineCount(true), 1U);
}

TEST_F(CalloutsItems, ConnectingIsAStepThatUndoTakesFromAllCalloutsOfTheItem) {
    const auto first = AddCallout(m_numbered, m_a, m_seven);
    const auto second = MakeCallout(m_numbered, m_a, m_seven);
    Connect(second, m_c);
    Show(second);
    const auto operation = MakeOperation();
    m_engine->UpdateItemGroupCalloutLeaders(m_seven, SbomSet{m_b.sbom, m_c.sbom}, {}, operation);
    zrk::RecordOperation(operation);
    ASSERT_EQ(first->GetLeaderLineCount(true), 3U);
    ASSERT_TRUE(m_scene->GetHistory().Undo());
    EXPECT_EQ(first->GetLeaderLineCount(true), 1U);
    EXPECT_EQ(second->GetLeaderLineCount(true), 1U);
    EXPECT_EQ(Filed(m_b), CalloutVec{first}) << "only the leader goes, the callout stays filed";
    ASSERT_TRUE(m_scene->GetHistory().Redo());
    EXPECT_EQ(first->GetLeaderLineCount(true), 3U);
    EXPECT_EQ(second->GetLeaderLineCount(true), 1U);
}

}  // namespace
}  // namespace zrcallouts
