#include "zrannotations/Callout.h"

#include <functional>

#include "tests/host/zrannotations/PartsTest.h"
#include "zrannotations/CalloutTemplates.h"
#include "zrk/annotation/AnnoSet.h"

namespace zrannotations {
namespace {

using CalloutPtr = du::SmartPtr<Callout>;

class ModifiedCounter : public zrk::SceneObserver {
public:
    void OnAnnotationModified(const du::SmartPtr<zrk::Annotation>&, bool) override { ++m_count; }
    int m_count = 0;
};

class EndWatcher : public zrk::illustration::CalloutTemplateObserver {
public:
    int OnDestroy() override {
        ++m_ended;
        return 0;
    }
    void OnTemplateModified() override { ++m_modified; }
    int m_ended = 0;
    int m_modified = 0;
};

class CalloutTest : public PartsTest {
protected:
    CalloutPtr On(const PartPtr& part) {
        const CalloutPtr callout(new Callout);
        EXPECT_TRUE(callout->Initialize(Template("t", "text"), part, false, nullptr));
        return callout;
    }
    static void Connect(const CalloutPtr& callout, const PartPtr& part, bool collapsed = false) {
        dg::DPoint3D anchor;
        ASSERT_TRUE(callout->CalculateAnchor(part, anchor));
        const auto leader = callout->CreateCalloutLeader(anchor, part, nullptr);
        leader->m_collapsed = collapsed;
        callout->ConnectLeader(leader);
    }
    void Show(const CalloutPtr& callout) {
        du::SmartPtr<zrk::AnnoSet> annoSet;
        m_scene->GetAnnoSet(annoSet);
        annoSet->AddAnnotationToSet(callout, nullptr);
    }
    static std::vector<std::string> PartsOf(const Callout& callout) {
        std::vector<std::string> ids;
        for (unsigned i = 0; i < callout.GetLeaderLineCount(true); ++i) {
            ids.push_back(callout.GetShapeInstanceIdAtPos(i));
        }
        return ids;
    }
};

using Ids = std::vector<std::string>;

TEST_F(CalloutTest, ListsWaitingLeadersLastUntilTheirPartsAreLoaded) {
    const auto callout = On(AddPart("a", Square(10), At(0, 0, 0)));
    callout->ConnectLeader(new CalloutLeader(dg::DPoint3D(1, 2, 0), "late"));
    callout->ConnectLeader(new CalloutLeader(dg::DPoint3D(), "never"));
    Connect(callout, AddPart("b", Square(10), At(30, 0, 0)));
    EXPECT_EQ(PartsOf(*callout), (Ids{"a", "b", "late", "never"}));
    EXPECT_EQ(callout->GetLeaderLineCount(false), 2U);
    EXPECT_FALSE(callout->GetShapeInstanceAtPos(2));
    dg::Location location;
    EXPECT_FALSE(callout->GetInstanceLocationAtPos(location, 2));

    const auto late = AddPart("late", Square(10), At(60, 0, 0));
    callout->OnShapeInstanceCreate(late);
    EXPECT_EQ(callout->GetLeaderLineCount(false), 2U);
    callout->UpdateWithCalloutInfo();
    EXPECT_EQ(callout->GetLeaderLineCount(false), 3U);
    EXPECT_EQ(callout->GetShapeInstanceAtPos(2), late);
    EXPECT_EQ(PartsOf(*callout), (Ids{"a", "b", "late", "never"}));
    dg::DPoint3D anchor;
    ASSERT_TRUE(callout->GetAnchorAtPos(2, anchor));
    ExpectNear(anchor, 1, 2, 0);
}

TEST_F(CalloutTest, DrawsOneOfCollapsedLeadersToThePartSeenBest) {
    const auto callout = On(AddPart("small", Square(6), At(-60, 0, 0)));
    Connect(callout, AddPart("large", Square(30), At(0, 0, 0)), true);
    Connect(callout, AddPart("as large", Square(30), At(50, 0, 0)), true);
    using Positions = std::vector<unsigned>;
    EXPECT_EQ(callout->GetDrawnLeaders(), Positions{1}) << "of equals the first";
    callout->SetHiddenAsDashedAtPos(true, 1);
    EXPECT_EQ(callout->GetDrawnLeaders(), Positions{2}) << "a covered end counts less";
    callout->SetVisible("as large", false);
    EXPECT_EQ(callout->GetDrawnLeaders(), Positions{0});
    callout->SetVisible("small", false);
    EXPECT_EQ(callout->GetDrawnLeaders(), Positions{1}) << "a dashed leader is better than none";
    callout->SetVisible("", true);
    callout->ShowAllLeaders(nullptr);
    EXPECT_EQ(callout->GetDrawnLeaders(), (Positions{0, 1, 2}));
}

TEST_F(CalloutTest, KeepsItsLabelRelativeToThePartWithoutTurningWithIt) {
    const dg::FMat33 quarterTurnTwiceAsLarge({0, 2, 0, -2, 0, 0, 0, 0, 2});
    const auto part =
        AddPart("a", Square(10), dg::Location(quarterTurnTwiceAsLarge, dg::DPoint3D(20, 10, 0)));
    const auto callout = On(part);
    dg::DPoint3D world;
    dg::DPoint3D anchor;
    ASSERT_TRUE(callout->GetAnchorAtPos(0, anchor));
    ASSERT_TRUE(callout->GetMarkupLabelPosition(world));
    dg::Location location;
    part->GetLocation(location);
    const dg::DPoint3D anchorInWorld = anchor * location;
    ExpectNear(world, anchorInWorld.x, anchorInWorld.y, anchorInWorld.z);

    EXPECT_EQ(callout->GetPlacementKind(), 0);
    callout->SetLabelPosition(dg::DPoint3D(3, 4, 5));
    ExpectNear(callout->GetPosition(), 3, 4, 5);
    ASSERT_TRUE(callout->GetMarkupLabelPosition(world));
    ExpectNear(world, 26, 18, 10);
    m_scene->SetLocation(part, At(-5, 0, 1));
    ASSERT_TRUE(callout->GetMarkupLabelPosition(world));
    ExpectNear(world, -2, 4, 6);
}

TEST_F(CalloutTest, TellsTheSceneOfChangedPlacesButNotOfLooks) {
    const auto part = AddPart("a", Square(10), At(0, 0, 0));
    const auto callout = On(part);
    const du::SmartPtr<ModifiedCounter> counter(new ModifiedCounter);
    m_scene->RegisterObserver(counter);
    callout->SetLabelPosition(dg::DPoint3D(1, 1, 1));
    EXPECT_EQ(counter->m_count, 0) << "it is in no scene yet";
    Show(callout);
    const struct {
        const char* name;
        int notifications;
        std::function<void()> change;
    } rows[] = {
        {"anchor", 1, [&] { callout->SetAnchor(dg::DPoint3D(1, 0, 0), 0); }},
        {"anchor of no leader", 0, [&] { callout->SetAnchor(dg::DPoint3D(1, 0, 0), 9); }},
        {"connect", 1, [&] { Connect(callout, part); }},
        {"connect nothing", 0, [&] { callout->ConnectLeader(nullptr); }},
        {"remove leader", 1, [&] { callout->RemoveLeaderAtPos(1); }},
        {"remove no leader", 0, [&] { callout->RemoveLeaderAtPos(9); }},
        {"label", 1, [&] { callout->SetLabelPosition(dg::DPoint3D(2, 2, 2)); }},
        {"dash", 0, [&] { callout->SetHiddenAsDashedAtPos(true, 0); }},
        {"dim", 0, [&] { callout->SetDimAtPos(true, 0, dg::Color(0.5F, 0.5F, 0.5F, 1.0F)); }},
        {"text", 0, [&] { callout->SetText(du::Symbol("7"), false); }},
        {"localised text", 0, [&] { callout->SetText(du::Symbol("7"), true); }},
        {"visibility", 0, [&] { callout->SetVisible("", false); }},
        {"subset", 0, [&] { callout->AttachSubsetScene(m_scene, ""); }},
        {"part moved", 0, [&] { callout->OnShapeInstanceLocation(part); }},
        {"part created", 0, [&] { callout->OnShapeInstanceCreate(part); }},
        {"front", 0, [&] { callout->BringToFront(); }},
        {"all leaders", 0, [&] { callout->ShowAllLeaders(nullptr); }},
        {"item", 0, [&] { callout->SetItemId(3); }},
        {"screen space", 0, [&] { callout->SetLabelScreenSpaceMode(m_view); }},
    };
    for (const auto& row : rows) {
        counter->m_count = 0;
        row.change();
        EXPECT_EQ(counter->m_count, row.notifications) << row.name;
    }
}

TEST_F(CalloutTest, FindsAReleasedTemplateByItsId) {
    ClearCalloutTemplates();
    const auto callout = On(AddPart("a", Square(10), At(0, 0, 0)));
    const auto first = Template("number", "1");
    callout->UpdateDefinition(first);
    callout->ReleaseCalloutTemplate();
    EXPECT_FALSE(callout->GetDefinition()) << "the template is offered no more";
    const auto second = Template("number", "2");
    AddCalloutTemplate(second);
    EXPECT_EQ(callout->GetDefinition(), second);
    callout->UpdateDefinition(nullptr);
    EXPECT_FALSE(callout->GetDefinition());
    ClearCalloutTemplates();
}

TEST_F(CalloutTest, LetsOneObserverWatchTheTemplateItHas) {
    const auto callout = On(AddPart("a", Square(10), At(0, 0, 0)));
    const auto former = Template("former", "1");
    const auto latter = Template("latter", "2");
    const du::SmartPtr<EndWatcher> first(new EndWatcher);
    const du::SmartPtr<EndWatcher> second(new EndWatcher);
    callout->UpdateDefinition(former);
    callout->RegisterTemplateObserver(first);
    callout->RegisterTemplateObserver(second);
    EXPECT_EQ(first->m_ended, 1);
    former->SetTextContent({});
    EXPECT_EQ(first->m_modified, 0);
    EXPECT_EQ(second->m_modified, 1);

    callout->UpdateDefinition(latter);
    former->SetTextContent({});
    EXPECT_EQ(second->m_modified, 1);
    latter->SetTextContent({});
    EXPECT_EQ(second->m_modified, 2);
    callout->UnregisterTemplateObserver();
    EXPECT_EQ(second->m_ended, 1);
    latter->SetTextContent({});
    EXPECT_EQ(second->m_modified, 2);
}

}  // namespace
}  // namespace zrannotations
