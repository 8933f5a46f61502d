#include "callouts/Callouts.h"

#include <atomic>
#include <functional>

#include "callouts/dll/ZRDll.h"
#include "tests/callouts/EngineFixture.h"
#include "tests/support/TraceLog.h"
#include "zrk/annotation/AnnoSetTable.h"
#include "zrk/illustration/CalloutEngineMgr.h"
#include "zrk/illustration/IsRunningIllustrate.h"
#include "zrk/scene/ShapeScene.h"
#include "zrk/tree/Tree.h"
#include "zrk/world/World.h"
#include "zrkapp/illustration/KorvanApp.h"

namespace zrcallouts {
namespace {

using zrkapp::illustration::KorvanAppObserver;

/// Counts how often a label asked for its properties: each regeneration does so once.
class CountingSbom : public zrk::illustration::SbomInstance {
public:
    using SbomInstance::SbomInstance;
    ~CountingSbom() override = default;

    du::SmartPtr<zrk::Property> QueryProperty(const du::Symbol& group, const du::Symbol& name,
                                              const du::Symbol& source) const override {
        ++m_queries;
        return SbomInstance::QueryProperty(group, name, source);
    }

    mutable std::atomic<int> m_queries{0};
};

class CalloutsLifecycle : public EngineFixture {
protected:
    CalloutsLifecycle() {
        m_part.instance->SetProperty(du::Symbol("Part"), du::Symbol("Mass"), du::Symbol("7"));
    }

    /// How many labels `notify` rebuilt.
    int Rebuilds(const std::function<void()>& notify) {
        m_counted->m_queries = 0;
        notify();
        return m_counted->m_queries;
    }

    void NotifyApplication(void (KorvanAppObserver::*notification)()) {
        zrkapp::illustration::KorvanApp::GetKorvanApp()->GetObservers().NotifyAll(
            [notification](KorvanAppObserver& observer) { (observer.*notification)(); });
    }

    void ChangeTree(int changes) {
        const auto tree = zrk::World::GetWorld()->GetTree();
        tree->BeginUpdate();
        for (int i = 0; i < changes; ++i) {
            tree->ChangeProperty(m_part.instance, du::Symbol("Part"), du::Symbol("Mass"), du::Symbol("8"));
        }
        tree->EndUpdate();
    }

    void ChangeTable(int changes) {
        const auto table = zrk::World::GetWorld()->GetAnnoSetTable();
        table->BeginUpdate();
        table->NotifyAdded(m_annoSet);
        table->NotifyRemoved(m_annoSet);
        for (int i = 0; i < changes; ++i) table->NotifyChanged(m_annoSet);
        table->EndUpdate();
    }

    /// All that can rebuild labels, once each.
    void ChangeEverything() {
        ChangeTree(1);
        ChangeTable(1);
        NotifyApplication(&KorvanAppObserver::OnFileSaved);
        zrk::World::GetWorld()->SetLanguage("de");
        zrk::World::GetWorld()->SetLanguage("en");
    }

    const du::SmartPtr<CountingSbom> m_counted{new CountingSbom(du::Symbol("counted"), "counted")};
    const Part m_part = AddPart("counted", {0, 0, 0}, nullptr, nullptr, m_counted);
    const TemplatePtr m_definition = MakeTemplate({Reference("Part", "Mass")});
};

TEST_F(CalloutsLifecycle, EachSourceOfChangesRebuildsTheLabelsOnceAndOnlyWhereItIsWatched) {
    const struct {
        const char* name;
        std::function<void()> notify;
        int illustrating;
        int otherwise;
    } rows[] = {
        {"tree, no change", [this] { ChangeTree(0); }, 0, 0},
        {"tree, one change", [this] { ChangeTree(1); }, 1, 1},
        {"tree, burst", [this] { ChangeTree(3); }, 1, 1},
        {"tree, change left over", [this] { zrk::World::GetWorld()->GetTree()->EndUpdate(); }, 0, 0},
        {"table, no change", [this] { ChangeTable(0); }, 0, 0},
        {"table, burst", [this] { ChangeTable(3); }, 1, 0},
        {"table, change left over", [this] { zrk::World::GetWorld()->GetAnnoSetTable()->EndUpdate(); }, 0, 0},
        {"file properties", [this] { NotifyApplication(&KorvanAppObserver::OnFilePropertiesChanged); }, 1, 0},
        {"file renamed", [this] { NotifyApplication(&KorvanAppObserver::OnFileRenamed); }, 1, 0},
        {"file saved", [this] { NotifyApplication(&KorvanAppObserver::OnFileSaved); }, 1, 0},
        {"mapping", [this] { NotifyApplication(&KorvanAppObserver::OnPropertyMappingChanged); }, 1, 0},
        {"units", [this] { NotifyApplication(&KorvanAppObserver::OnUnitsChanged); }, 1, 0},
        {"structure new", [this] { NotifyApplication(&KorvanAppObserver::OnStructureNew); }, 0, 0},
        {"structure import", [this] { NotifyApplication(&KorvanAppObserver::OnStructureImport); }, 0, 0},
    };
    for (const bool illustrate : {true, false}) {
        StopEngine();
        zrk::illustration::SetRunningIllustrate(illustrate);
        StartEngine();
        const auto callout = AddCallout(m_definition, m_part);
        ASSERT_EQ(Text(callout), illustrate ? "7" : "8");
        for (const auto& row : rows) {
            EXPECT_EQ(Rebuilds(row.notify), illustrate ? row.illustrating : row.otherwise)
                << row.name << (illustrate ? " in" : " outside") << " the illustration application";
        }
        EXPECT_EQ(Text(callout), "8");
        Remove(callout);
        m_engine->Destroy();
        // Without item list a rebuilt label is an empty one, which is traced.
        m_engine->AddToSet(callout);
        const zrtest::TraceLog traces;
        for (const auto& row : rows) row.notify();
        EXPECT_EQ(traces.m_lines.size(), 0U) << "an observer was left registered";
        m_engine->RegenerateCalloutLabels();
        EXPECT_EQ(traces.m_lines.size(), 1U);
    }
}

TEST_F(CalloutsLifecycle, ASecondInitializeLeavesTheFormerObserversNotifying) {
    AddCallout(m_definition, m_part);
    m_engine->Initialize(m_scene);
    EXPECT_EQ(Rebuilds([this] { ChangeEverything(); }), 3 * 2) << "tree, table and application";
    m_engine->Destroy();
    m_engine = nullptr;
    WaitForPool();
    ChangeEverything();  // the former observers are registered still, and their engine is gone
}

TEST_F(CalloutsLifecycle, AnEngineFreedWithoutDestroyIsReachedNoMore) {
    const auto callout = AddCallout(m_definition, m_part);
    const auto id = AddItem({m_part});
    const auto items = m_itemList->GetZrkItemList();
    const auto inset = AddInset(200, 150);
    zrk::illustration::CalloutEngineMgr::Instance().Unregister(m_scene, m_engine.get());
    ASSERT_EQ(m_engine->GetReferenceCount(), 1U);
    m_engine = nullptr;
    EXPECT_EQ(Rebuilds([&] {
                  ChangeEverything();
                  items->SetTag(id, "x");
                  items->RemoveItem(id);
                  inset->SetRadius(5);
                  m_definition->SetTextContent({Reference("Part", "Mass"), Literal("!")});
              }),
              0);
    EXPECT_EQ(Text(callout), "7");
}

TEST_F(CalloutsLifecycle, DestroyEmptiesTheRegistryAndDetachesTheCalloutsOnThePool) {
    const auto inset = AddInset(200, 150);
    const auto other = AddPart("other", {5, 0, 0});
    const auto callout = MakeCallout(m_definition, m_part, 4);
    Connect(callout, other);
    callout->SetInsetAtPos(inset, 1);
    callout->SetInsetAtPos(inset, 0);
    Show(callout);
    ASSERT_EQ(m_engine->SnapshotInset(inset), CalloutVec{callout});
    const auto itemList = m_itemList;

    m_engine->Destroy();
    WaitForPool();

    EXPECT_FALSE(m_engine->GetItemsList());
    EXPECT_FALSE(m_engine->GetScene());
    EXPECT_TRUE(OfItem(4).empty());
    EXPECT_TRUE(Filed(m_part).empty());
    EXPECT_TRUE(m_engine->SnapshotInset(inset).empty());
    EXPECT_NE(zritemlist::ItemList::GetItemListForScene(m_scene).get(), itemList.get());
    EXPECT_FALSE(callout->GetInsetAtPos(0));
    EXPECT_TRUE(callout->GetInsetAtPos(1)) << "the inset is taken from the first leader alone";
    m_definition->SetTextContent({Literal("!")});
    EXPECT_EQ(Text(callout), "7");
    EXPECT_TRUE(callout->HasItemId()) << "the template is watched still";
}

TEST_F(CalloutsLifecycle, ASceneThatIsNotIllustratedGetsNoItemListButIsWatched) {
    const du::SmartPtr<zrk::ShapeScene> scene(new zrk::ShapeScene);
    const du::SmartPtr<zrk::ShapeView> view(new zrk::ShapeView(scene, 1));
    scene->AddView(view);
    const auto part = scene->CreateShapeInstance(m_part.instance);
    {
        const du::SmartPtr<Callouts> engine(new Callouts(scene));
        EXPECT_EQ(GetCalloutsEngineForScene(scene).get(), engine.get());
        EXPECT_FALSE(engine->GetItemsList());
        const CalloutPtr callout(new zrannotations::Callout);
        ASSERT_TRUE(callout->Initialize(m_definition, part, false, nullptr));
        Translate(callout);
        engine->AddToSet(callout);
        for (const bool changes : {false, true}) {
            view->SetDirty(false);
            ChangeTree(changes ? 1 : 0);
            EXPECT_EQ(view->IsDirty(), changes);
        }
        zrk::World::GetWorld()->SetLanguage("de");
        EXPECT_EQ(callout->GetText(true).Text(), "Schraube");
        zrk::World::GetWorld()->SetLanguage("en");
        engine->Destroy();
        zrk::World::GetWorld()->SetLanguage("de");
        EXPECT_EQ(callout->GetText(true).Text(), "Screw");
    }
    scene->Close();
}

}  // namespace
}  // namespace zrcallouts
