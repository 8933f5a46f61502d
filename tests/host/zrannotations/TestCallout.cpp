#include "zrannotations/Callout.h"

#include <atomic>
#include <functional>
#include <thread>

#include "tests/host/zrannotations/PartsTest.h"
#include "zrannotations/CalloutTemplates.h"
#include "zrk/annotation/AnnoSet.h"
#include "zrk/tree/ComponentInstance.h"

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

TEST_F(CalloutTest, StandsForAPartOrForAnAssemblyAndNeedsGeometry) {
    const auto part = AddPart("a", Square(10), At(0, 0, 0));
    const du::SmartPtr<zrk::BaseInstance> assembly(
        new zrk::illustration::SbomInstance(du::Symbol("top"), "top"));
    EXPECT_EQ(On(part)->GetType(), CALLOUT_TYPE_SHAPE);
    const CalloutPtr onAssembly(new Callout);
    EXPECT_TRUE(onAssembly->Initialize(Template("t", "text"), part, true, assembly));
    EXPECT_EQ(onAssembly->GetType(), CALLOUT_TYPE_ASSEMBLY);
    EXPECT_EQ(onAssembly->GetAssemblyInstanceAtPos(0), assembly);
    EXPECT_TRUE(onAssembly->IsKit());
    const CalloutPtr onNothing(new Callout);
    EXPECT_FALSE(
        onNothing->Initialize(Template("t", "text"), AddPart("b", nullptr, At(0, 0, 0)), false, nullptr));
    EXPECT_FALSE(onNothing->Initialize(Template("t", "text"), nullptr, false, nullptr));
    EXPECT_FALSE(onNothing->IsInitialized());
}

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

TEST_F(CalloutTest, FindsWaitingPartsAndSymbolsOfTheSceneItEnters) {
    const auto part = AddPart("part", Square(10), At(0, 0, 0));
    const du::SmartPtr<zrk::ComponentNode> node(new zrk::ComponentNode("arrow", new zrk::Shape(Square(5))));
    const du::SmartPtr<zrk::Instance> arrow(new zrk::Instance(
        du::SmartPtr<zrk::ComponentInstance>(new zrk::ComponentInstance(du::Symbol("arrow"))), "arrow", node,
        At(50, 0, 0)));
    const auto symbol = m_scene->CreateShapeInstance(arrow);
    const CalloutPtr callout(new Callout);
    for (const std::string& id : {std::string("gone"), std::string("part"), arrow->GetIdentifier().Text()}) {
        callout->ConnectLeader(new CalloutLeader(dg::DPoint3D(), id));
    }
    const Callout::SymbolMap symbols{{arrow, nullptr}};
    callout->UpdateWithCalloutInfo(symbols, {});
    EXPECT_EQ(callout->GetLeaderLineCount(false), 0U) << "outside a scene there is nothing to find";
    Show(callout);
    callout->UpdateWithCalloutInfo(symbols, {});
    ASSERT_EQ(callout->GetLeaderLineCount(false), 2U);
    EXPECT_EQ(callout->GetShapeInstanceAtPos(0), part);
    EXPECT_EQ(callout->GetShapeInstanceAtPos(1), symbol);
    EXPECT_EQ(callout->GetShapeInstanceIdAtPos(2), "gone");
}

TEST_F(CalloutTest, FollowsAPartThatIsMadeAnew) {
    const auto former = AddPart("a", Square(10), At(0, 0, 0));
    const auto callout = On(former);
    callout->SetVisible("a", false);
    m_scene->RemoveShapeInstance(former);
    const auto anew = AddPart("a", Square(10), At(9, 0, 0));
    callout->OnShapeInstanceCreate(anew);
    EXPECT_EQ(callout->GetShapeInstanceAtPos(0), anew);
    EXPECT_FALSE(callout->IsHiddenAtPos(0));
}

// Parts outside the service structure have no id: they are not one and the same part.
TEST_F(CalloutTest, KeepsItsPartWhenAnotherWithoutIdIsMade) {
    const auto makeNameless = [this](double x) {
        const du::SmartPtr<zrk::ComponentNode> node(new zrk::ComponentNode("n", new zrk::Shape(Square(10))));
        return m_scene->CreateShapeInstance(new zrk::Instance(du::Symbol("e"), "n", node, At(x, 0, 0)));
    };
    const auto part = makeNameless(0);
    const auto callout = On(part);
    callout->OnShapeInstanceCreate(makeNameless(40));
    EXPECT_EQ(callout->GetShapeInstanceAtPos(0), part);
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

TEST_F(CalloutTest, DrawsEveryVisibleLeaderWhenNoneIsCollapsed) {
    const auto callout = On(AddPart("a", Square(10), At(0, 0, 0)));
    Connect(callout, AddPart("b", Square(10), At(30, 0, 0)));
    callout->ConnectLeader(new CalloutLeader(dg::DPoint3D(), "waiting"));
    EXPECT_EQ(callout->GetDrawnLeaders(), (std::vector<unsigned>{0, 1}));
    callout->SetVisible("a", false);
    EXPECT_TRUE(callout->IsHiddenAtPos(0));
    EXPECT_EQ(callout->GetDrawnLeaders(), (std::vector<unsigned>{1}));
    EXPECT_TRUE(callout->AttachSubsetScene(m_scene, "a"));
    EXPECT_FALSE(callout->IsHiddenAtPos(0));
    EXPECT_FALSE(callout->AttachSubsetScene(nullptr, "a"));
}

TEST_F(CalloutTest, HidesLeadersThatEndOutsideTheirInset) {
    const auto inside = AddPart("in", Square(10), At(0, 0, 0));
    const auto callout = On(inside);
    Connect(callout, AddPart("out", Square(10), At(60, 0, 0)));
    const du::SmartPtr<Inset> inset(new Inset(m_view, {{100, 80, 0}, {100, 80, 0}, 50, 2.0F}));
    callout->SetInsetAtPos(inset, 0);
    callout->SetInsetAtPos(inset, 1);
    callout->SetVisibleWithinInsetBounds(nullptr);
    EXPECT_FALSE(callout->IsHiddenAtPos(1));
    callout->SetVisibleWithinInsetBounds(inset);
    EXPECT_FALSE(callout->IsHiddenAtPos(0));
    EXPECT_TRUE(callout->IsHiddenAtPos(1)) << "120 pixels from the middle of a disc of 50";
    callout->SetVisible("out", true);
    EXPECT_TRUE(callout->IsHiddenAtPos(1)) << "showing the part does not bring it into the inset";
    inset->SetRadius(130);
    callout->SetVisibleWithinInsetBounds(inset);
    EXPECT_FALSE(callout->IsHiddenAtPos(1));
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

TEST_F(CalloutTest, KeepsAFreeLabelInTheWorld) {
    const CalloutPtr callout(new Callout);
    callout->InitializeFree(Template("t", "text"), dg::DPoint3D(1, 2, 3));
    EXPECT_EQ(callout->GetPlacementKind(), 1);
    EXPECT_TRUE(callout->IsInitialized());
    Connect(callout, AddPart("a", Square(10), At(50, 0, 0)));
    dg::DPoint3D world;
    ASSERT_TRUE(callout->GetMarkupLabelPosition(world));
    ExpectNear(world, 1, 2, 3);
}

TEST_F(CalloutTest, HoldsItsPixelInScreenSpaceUntilItIsPlaced) {
    const auto callout = On(AddPart("a", Square(10), At(0, 0, 0)));
    callout->SetLabelPosition(dg::DPoint3D(20, 30, 0));
    du::SmartPtr<zrk::ShapeView> view;
    ExpectNear(callout->GetLabelRelativeScreenPosition(view), 120, 50, 0.5);
    EXPECT_EQ(view, m_view) << "the view that the pixel belongs to";
    callout->SetLabelScreenSpaceMode(nullptr);
    EXPECT_FALSE(callout->IsLabelInScreenSpace());
    callout->SetLabelScreenSpaceMode(m_view);
    LookFrom(40, 0);
    ExpectNear(callout->GetLabelRelativeScreenPosition(view), 120, 50, 0.5);
    callout->SetLabelPosition(dg::DPoint3D(20, 30, 0));
    EXPECT_FALSE(callout->IsLabelInScreenSpace());
    ExpectNear(callout->GetLabelRelativeScreenPosition(view), 80, 50, 0.5);
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
        {"dim", 0,
         [&] {
             callout->SetDimAtPos(true, 0, dg::Color{0.5F, 0.5F, 0.5F, 1.0F});
         }},
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

TEST_F(CalloutTest, AsksForANewPictureWhenItsLooksChange) {
    const auto callout = On(AddPart("a", Square(10), At(0, 0, 0)));
    const std::function<void()> changes[] = {
        [&] { callout->SetText(du::Symbol("7"), false); }, [&] { callout->SetVisible("a", false); },
        [&] { callout->BringToFront(); }, [&] { callout->OnShapeInstanceLocation(nullptr); },
        [&] { callout->ShowAllLeaders(nullptr); }};
    for (const auto& change : changes) {
        m_view->SetDirty(false);
        change();
        EXPECT_TRUE(m_view->IsDirty());
    }
}

TEST_F(CalloutTest, KeepsLooksAndSymbolsPerLeader) {
    const auto callout = On(AddPart("a", Square(10), At(0, 0, 0)));
    Connect(callout, AddPart("b", Square(10), At(30, 0, 0)));
    EXPECT_FALSE(callout->IsAnchorPointCalculated());
    callout->SetAnchor(dg::DPoint3D(4, 3, 0), 1);
    EXPECT_TRUE(callout->IsAnchorPointCalculated());
    callout->SetDimAtPos(true, 1, dg::Color{0.25F, 0.5F, 0.75F, 1.0F});
    callout->SetSymbolIdAtPos(12, 1);
    callout->SetHiddenAsDashedAtPos(true, 0);
    callout->RemoveLeaderAtPos(0);
    EXPECT_FALSE(callout->IsHiddenAsDashedAtPos(0));
    EXPECT_TRUE(callout->IsDimAtPos(0));
    EXPECT_EQ(callout->GetDimColorAtPos(0).b, 0.75F);
    EXPECT_EQ(callout->GetSymbolIdAtPos(0), 12U);
    dg::DPoint3D anchor;
    EXPECT_FALSE(callout->GetAnchorAtPos(1, anchor));
    EXPECT_FALSE(callout->IsDimAtPos(1));
    ASSERT_TRUE(callout->GetAnchorAtPos(0, anchor));
    ExpectNear(anchor, 4, 3, 0);
    dg::Color blend{0, 0, 0, 0.5F};
    Callout::GetBlendColor({1, 0, 0, 1}, {0, 1, 0.5F, 1}, blend);
    EXPECT_EQ(blend, (dg::Color{0.5F, 0.5F, 0.25F, 0.5F}));
}

TEST_F(CalloutTest, ShowsTheTranslationWhereThereIsOne) {
    const auto callout = On(AddPart("a", Square(10), At(0, 0, 0)));
    callout->SetText(du::Symbol("bolt"), false);
    EXPECT_EQ(callout->GetMarkupText().Text(), "bolt");
    callout->SetText(du::Symbol("Schraube"), true);
    EXPECT_EQ(callout->GetMarkupText().Text(), "Schraube");
    EXPECT_EQ(callout->GetText(false).Text(), "bolt");

    callout->SetupLocalizationIfNecessary(false);
    EXPECT_FALSE(callout->GetLocalizableString().IsEnabled());
    callout->SetupLocalizationIfNecessary(true);
    EXPECT_TRUE(callout->GetLocalizableString().IsEnabled());
    EXPECT_EQ(du::Symbol(callout->GetLocalizableString()).Text(), "bolt");
    callout->GetLocalizableString() = du::Symbol("{0}");
    callout->SetupLocalizationIfNecessary(true);
    EXPECT_EQ(du::Symbol(callout->GetLocalizableString()).Text(), "{0}") << "an own text is not overwritten";
}

TEST_F(CalloutTest, KnowsWhetherALegacyTextDiffersFromTheGenerated) {
    const auto callout = On(AddPart("a", Square(10), At(0, 0, 0)));
    EXPECT_FALSE(callout->CheckDynamicTextForLegacyCallout("7"));
    callout->SetLegacyText(du::Symbol("7a"));
    EXPECT_TRUE(callout->CheckDynamicTextForLegacyCallout("7"));
    EXPECT_FALSE(callout->CheckDynamicTextForLegacyCallout("7a"));
    EXPECT_EQ(callout->GetText(false).Text(), "7a");
}

TEST_F(CalloutTest, LeavesTheItemIdUntouchedWithoutItem) {
    const auto callout = On(AddPart("a", Square(10), At(0, 0, 0)));
    unsigned id = 99;
    EXPECT_FALSE(callout->GetItemId(id));
    EXPECT_EQ(id, 99U);
    EXPECT_FALSE(callout->ReferencesItemId(0));
    callout->SetItemId(4);
    EXPECT_TRUE(callout->GetItemId(id));
    EXPECT_EQ(id, 4U);
    callout->RemoveItemId();
    EXPECT_FALSE(callout->HasItemId());
    EXPECT_FALSE(callout->ReferencesItemId(4));
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

TEST_F(CalloutTest, EndsTheObserverOfItsTemplateWithItself) {
    const auto definition = Template("t", "1");
    const du::SmartPtr<EndWatcher> watcher(new EndWatcher);
    CalloutPtr callout(new Callout);
    callout->UpdateDefinition(definition);
    callout->RegisterTemplateObserver(watcher);
    callout = nullptr;
    EXPECT_EQ(watcher->m_ended, 1);
    definition->SetTextContent({});
    EXPECT_EQ(watcher->m_modified, 0);
}

TEST_F(CalloutTest, ListsTheFrontmostLast) {
    const auto part = AddPart("a", Square(10), At(0, 0, 0));
    const auto a = On(part);
    const auto b = On(part);
    a->BringToFront();
    b->BringToFront();
    EXPECT_LT(a->GetDrawingOrder(), b->GetDrawingOrder());
    a->BringToFront();
    EXPECT_GT(a->GetDrawingOrder(), b->GetDrawingOrder());
}

// Readers on other threads meet leaders that come and go.
TEST_F(CalloutTest, IsReadWhileItsLeadersChange) {
    const auto a = AddPart("a", Square(10), At(0, 0, 0));
    const auto b = AddPart("b", Square(20), At(40, 0, 0));
    const auto callout = On(a);
    Show(callout);
    std::atomic<bool> isDone{false};
    std::thread reader([&] {
        while (!isDone) {
            for (const unsigned position : callout->GetDrawnLeaders()) {
                dg::Location location;
                callout->GetInstanceLocationAtPos(location, position);
                callout->IsHiddenAtPos(position);
            }
            EXPECT_GE(callout->GetLeaderLineCount(true), 1U);
            callout->GetText(true);
        }
    });
    for (int i = 0; i < 200; ++i) {
        Connect(callout, b, true);
        callout->SetDimAtPos(i % 2 == 0, 1, dg::Color());
        callout->SetText(du::Symbol(std::to_string(i)), false);
        callout->RemoveLeaderAtPos(1);
    }
    isDone = true;
    reader.join();
}

}  // namespace
}  // namespace zrannotations
