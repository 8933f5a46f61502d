#include "zrannotations/CalloutState.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

#include "tests/host/zrannotations/PartsTest.h"
#include "tests/support/AnnotationLog.h"
#include "zrannotations/CalloutTemplates.h"
#include "zrannotations/CombinedCallout.h"
#include "zrannotations/Inset.h"
#include "zrk/annotation/AnnoSet.h"
#include "zrk/operation/Transaction.h"

namespace zrannotations {
namespace {

using CalloutPtr = du::SmartPtr<Callout>;
using CombinedPtr = du::SmartPtr<CombinedCallout>;
using InsetPtr = du::SmartPtr<Inset>;

class CalloutStateTest : public PartsTest {
protected:
    CalloutStateTest() {
        LookFrom(0, 0);
        m_scene->AddView(m_view);
        m_scene->GetAnnoSet(m_annoSet);
        AddCalloutTemplate(m_first);
        AddCalloutTemplate(m_second);
        m_scene->RegisterObserver(m_doorman);
    }
    ~CalloutStateTest() override { ClearCalloutTemplates(); }

    CalloutPtr Show(const PartPtr& part, unsigned itemId) {
        const CalloutPtr callout(new Callout);
        EXPECT_TRUE(callout->Initialize(m_first, part, false, nullptr));
        callout->SetItemId(itemId);
        m_annoSet->AddAnnotationToSet(callout, nullptr);
        return callout;
    }
    static void Connect(const CalloutPtr& callout, const PartPtr& part) {
        callout->ConnectLeader(callout->CreateCalloutLeader({1, 2, 3}, part, nullptr));
    }
    std::string Told() { return m_doorman->Take(); }

    const du::SmartPtr<TAnnotation> m_first = Template("first", "1");
    const du::SmartPtr<TAnnotation> m_second = Template("second", "2");
    const PartPtr m_a = AddPart("a", Square(10), At(0, 0, 0));
    const PartPtr m_b = AddPart("b", Square(10), At(20, 0, 0));
    const InsetPtr m_inset{new Inset(m_view, {{110, 90, 0}, {50, 40, 0}, 30, 3.0F})};
    const du::SmartPtr<zrtest::AnnotationLog> m_doorman{new zrtest::AnnotationLog};
    du::SmartPtr<zrk::AnnoSet> m_annoSet;
};

// Picks that an undo sets off are answered on another thread while it goes on; what they tell must not be
// lost.
TEST_F(CalloutStateTest, KeepsWhatPicksTellWhileStatesComeBack) {
    const auto callout = Show(m_a, 1);
    const CalloutState before = callout->CaptureState();
    callout->SetText(du::Symbol("x"), false);
    const CalloutState after = callout->CaptureState();
    std::atomic<bool> isOver{false};
    std::thread user([&] {
        while (!isOver) {
            callout->RestoreState(before);
            callout->RestoreState(after);
        }
    });
    int lost = 0;
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(500);
    for (bool isCovered = true; std::chrono::steady_clock::now() < end; isCovered = !isCovered) {
        callout->SetCoveredAtPos(isCovered, 0, {});
        std::this_thread::yield();
        lost += callout->IsHiddenAsDashedAtPos(0) == isCovered ? 0 : 1;
    }
    isOver = true;
    user.join();
    EXPECT_EQ(lost, 0);
}

TEST_F(CalloutStateTest, BringsBackEverythingAndIsFiledAnewWhereThatMatters) {
    const auto callout = Show(m_a, 1);
    Connect(callout, m_b);
    const dg::DPoint3D elsewhere(9, 9, 9);
    const CalloutStyle boxed{BalloonShape::Box, {}, {}, 2.0};
    const struct {
        const char* name;
        std::function<void()> change;
        bool isFiledAnew;
    } rows[] = {
        {"text", [&] { callout->SetText(du::Symbol("x"), false); }, false},
        {"localized text", [&] { callout->SetText(du::Symbol("x"), true); }, false},
        {"legacy text", [&] { callout->SetLegacyText(du::Symbol("x")); }, false},
        {"translation", [&] { callout->GetLocalizableString().SetTranslation("de", du::Symbol("x")); },
         false},
        {"position", [&] { callout->SetLabelPosition(elsewhere); }, false},
        {"screen space", [&] { callout->SetLabelScreenSpaceMode(m_view); }, false},
        {"anchor", [&] { callout->SetAnchor(elsewhere, 1); }, false},
        {"hidden", [&] { callout->SetVisible("b", false); }, false},
        {"symbol", [&] { callout->SetSymbolIdAtPos(4, 1); }, false},
        {"style", [&] { callout->SetStyle(boxed); }, false},
        {"custom", [&] { callout->SetCustomCallout(true); }, true},
        {"item", [&] { callout->SetItemId(2); }, true},
        {"no item", [&] { callout->RemoveItemId(); }, true},
        {"template", [&] { callout->UpdateDefinition(m_second); }, true},
        {"inset", [&] { callout->SetInsetAtPos(m_inset, 1); }, true},
        {"leader gone", [&] { callout->RemoveLeaderAtPos(0); }, true},
        {"leader more", [&] { Connect(callout, m_a); }, true},
        {"free", [&] { callout->InitializeFree(m_first, elsewhere); }, false},
    };
    const CalloutState before = callout->CaptureState();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        zrk::Transaction action(m_scene, row.name);
        row.change();
        action.Commit();
        const CalloutState changed = callout->CaptureState();
        EXPECT_FALSE(changed == before);
        Told();
        m_scene->GetHistory().Undo();
        EXPECT_TRUE(callout->CaptureState() == before);
        EXPECT_EQ(Told(), row.isFiledAnew ? "-+" : "");
        EXPECT_EQ(callout->GetDefinition(), m_first);
        m_scene->GetHistory().Redo();
        EXPECT_TRUE(callout->CaptureState() == changed);
        m_scene->GetHistory().Undo();
    }
}

TEST_F(CalloutStateTest, IsNotFiledWhileASavedViewAloneKeepsIt) {
    const auto callout = Show(m_a, 1);
    const CalloutState before = callout->CaptureState();
    m_annoSet->AddReferencedAnnotation(callout);
    m_annoSet->RemoveAnnotationFromSet(callout, nullptr);
    callout->SetItemId(2);
    Told();
    callout->RestoreState(before);
    EXPECT_EQ(Told(), "");
    EXPECT_TRUE(callout->ReferencesItemId(1));
}

// Dashes are checked again by whoever looks; to show them solid meanwhile would flicker.
TEST_F(CalloutStateTest, LeavesWhatIsDerivedFromTheViewToTheView) {
    const auto callout = Show(m_a, 1);
    const CalloutState before = callout->CaptureState();
    callout->SetHiddenAsDashedAtPos(true, 0);
    callout->BringToFront();
    EXPECT_TRUE(callout->CaptureState() == before);
    callout->SetText(du::Symbol("x"), false);
    callout->RestoreState(before);
    EXPECT_TRUE(callout->IsHiddenAsDashedAtPos(0));
}

TEST_F(CalloutStateTest, FollowsTheCommandThroughAnInsetAndBack) {
    const auto callout = Show(m_a, 1);
    Told();
    callout->LeadThrough(m_inset, 0);
    EXPECT_EQ(callout->GetInsetAtPos(0), m_inset);
    EXPECT_EQ(Told(), "-+");
    EXPECT_TRUE(callout->IsHiddenAtPos(0)) << "the part lies outside the glass";
    callout->LeadThrough(m_inset, 5);
    EXPECT_EQ(Told(), "");
}

TEST_F(CalloutStateTest, CombinesAndDissolvesUndoably) {
    const auto one = Show(m_a, 1);
    const auto two = Show(m_b, 2);
    const auto three = Show(m_b, 3);
    one->SetStyle({BalloonShape::Box, {}, {}, {}});
    const auto before = m_annoSet->GetAnnotations();
    zrk::Transaction combine(m_scene, "combine");
    const CombinedPtr pair = CombinedCallout::Combine({one, two}, nullptr);
    const CombinedPtr all = CombinedCallout::Combine({pair, three}, nullptr);
    combine.Commit();
    ASSERT_TRUE(all);
    EXPECT_EQ(m_annoSet->GetAnnotations(), std::vector<du::SmartPtr<zrk::Annotation>>{all});
    EXPECT_EQ(all->GetCalloutVec(), (std::vector<CalloutPtr>{one, two, three}));
    EXPECT_EQ(all->GetStyle(), one->GetStyle()) << "looks as the first one did";
    {
        zrk::Transaction edit(m_scene, "a member changes in its combined callout");
        two->SetText(du::Symbol("x"), false);
        all->RemoveItemId(1);
        edit.Commit();
    }
    zrk::Transaction dissolve(m_scene, "dissolve");
    EXPECT_EQ(all->Dissolve(nullptr), (std::vector<CalloutPtr>{two, three}));
    dissolve.Commit();
    auto& history = m_scene->GetHistory();
    history.Undo();
    EXPECT_EQ(all->GetCount(), 2U);
    history.Undo();
    EXPECT_EQ(all->GetCalloutVec().front(), one);
    EXPECT_EQ(two->GetText(false).Text(), "");
    history.Undo();
    EXPECT_EQ(m_annoSet->GetAnnotations(), before);
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(history.Redo());
    EXPECT_EQ(two->GetText(false).Text(), "x");
    EXPECT_EQ(m_annoSet->GetAnnotations(), (std::vector<du::SmartPtr<zrk::Annotation>>{two, three}));
    EXPECT_FALSE(CombinedCallout::Combine({}, nullptr));
    EXPECT_FALSE(CombinedCallout::Combine({two, one}, nullptr)) << "one is in no scene";
}

TEST_F(CalloutStateTest, IsFoundByItsItemWhateverThatBecomes) {
    const auto index = std::make_shared<ItemIndex>();
    const auto one = Show(m_a, 1);
    const auto two = Show(m_b, 2);
    const CombinedPtr combined(new CombinedCallout({one, two}));
    const auto third = Show(m_b, 2);
    combined->SetItemIndex(index);
    third->SetItemIndex(index);
    EXPECT_EQ(index->Find(1), std::vector<CalloutPtr>{combined});
    EXPECT_EQ(index->Find(2).size(), 2U);
    one->SetItemId(2);
    EXPECT_FALSE(index->IsUsed(1));
    EXPECT_EQ(index->Find(2).size(), 2U) << "entered twice for two members";
    const CalloutState full = combined->CaptureState();
    combined->RemoveItemId(2);
    EXPECT_EQ(index->Find(2).size(), 2U) << "the other member still carries it";
    combined->RemoveItemId(2);
    EXPECT_EQ(index->Find(2), std::vector<CalloutPtr>{third});
    third->SetItemIndex(nullptr);
    EXPECT_FALSE(index->IsUsed(2));
    combined->RestoreState(full);
    EXPECT_EQ(index->Find(2), std::vector<CalloutPtr>{combined});
    one->RemoveItemId();
    two->SetItemId(4);
    EXPECT_EQ(index->Find(4), std::vector<CalloutPtr>{combined});
    combined->SetItemIndex(nullptr);
    two->SetItemId(5);
    EXPECT_FALSE(index->IsUsed(4) || index->IsUsed(5));
    index->Close();
    third->SetItemIndex(index);
    EXPECT_FALSE(index->IsUsed(2));
}

}  // namespace
}  // namespace zrannotations
