#include "zrk/scene/ShapeScene.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "tests/host/zrk/Stage.h"
#include "zrk/scene/PickScene.h"
#include "zrk/scene/SceneObserver.h"

namespace zrk {
namespace {

using PartPtr = Stage::PartPtr;

/// Writes down what happens to parts.
class SceneLog : public SceneObserver {
public:
    void OnShapeInstanceCreated(const PartPtr& part) override { m_log += "+" + Stage::NameOf(part); }
    void OnShapeInstanceMoved(const PartPtr& part) override { m_log += ">" + Stage::NameOf(part); }
    void OnShapeInstanceVisibilityChanged(const PartPtr& part, bool visible) override {
        m_log += (visible ? "1" : "0") + Stage::NameOf(part);
    }
    void OnShapeInstanceRemoved(const PartPtr& part) override { m_log += "-" + Stage::NameOf(part); }
    void OnSceneClosed() override { m_log += '!'; }
    std::string m_log;
};

class ShapeSceneTest : public testing::Test {
protected:
    void SetUp() override { m_stage.GetScene()->RegisterObserver(m_log); }

    PartPtr Find(const PartPtr& part) const {
        du::SmartPtr<Instance> instance;
        part->GetInstance(instance);
        PartPtr found;
        m_stage.GetScene()->GetShapeInstance(instance, found);
        return found;
    }

    Stage m_stage;
    ShapeScene& m_scene = *m_stage.GetScene();
    const du::SmartPtr<SceneLog> m_log{new SceneLog};
};

TEST_F(ShapeSceneTest, TellsOfEveryChangeOnceAndOfNothingElse) {
    const PartPtr a = m_stage.AddBox("a", 0, 0, 0, {1, 1, 1});
    const PartPtr b = m_stage.AddBox("b", 5, 0, 0, {1, 1, 1});
    du::SmartPtr<Instance> instance;
    a->GetInstance(instance);
    EXPECT_EQ(m_scene.CreateShapeInstance(instance), a);
    m_scene.SetLocation(b, PlaceAt(1, 2, 3));
    m_scene.SetVisible(a, true);
    m_scene.SetVisible(a, false);
    m_scene.SetVisible(a, false);
    m_scene.SetVisible(a, true);
    m_scene.SetPhantom(a, true);
    m_scene.RemoveShapeInstance(b);
    m_scene.RemoveShapeInstance(b);
    m_scene.Close();
    EXPECT_EQ(m_log->m_log, "+a+b>b0a1a-b!");
    dg::Location location;
    b->GetLocation(location);
    EXPECT_EQ(location.GetPos(), dg::DPoint3D(1, 2, 3));
    EXPECT_TRUE(a->IsPhantom());
}

TEST_F(ShapeSceneTest, FindsWhatIsThereInOrderOfCreation) {
    const PartPtr a = m_stage.AddBox("a", 0, 0, 0, {1, 1, 1});
    const PartPtr b = m_stage.AddBox("b", 0, 0, 0, {1, 1, 1});
    const PartPtr c = m_stage.AddBox("c", 0, 0, 0, {1, 1, 1});
    EXPECT_EQ(Find(b), b);
    m_scene.RemoveShapeInstance(b);
    EXPECT_FALSE(Find(b));
    EXPECT_EQ(m_scene.GetShapeInstances(), (std::vector<PartPtr>{a, c}));
    du::SmartPtr<Instance> instance;
    b->GetInstance(instance);
    const PartPtr again = m_scene.CreateShapeInstance(instance);
    EXPECT_NE(again.get(), b.get());
    EXPECT_EQ(m_scene.GetShapeInstances(), (std::vector<PartPtr>{a, c, again}));
}

// Picks and visibility maps are kept until the revision grows: one forgotten change shows an old picture.
TEST_F(ShapeSceneTest, RaisesItsRevisionWithEveryChangeAndOnlyThen) {
    std::uint64_t last = m_scene.GetRevision();
    const auto hasGrown = [&] { return std::exchange(last, m_scene.GetRevision()) < m_scene.GetRevision(); };
    const PartPtr a = m_stage.AddBox("a", 0, 0, 0, {1, 1, 1});
    EXPECT_TRUE(hasGrown());
    m_scene.SetLocation(a, PlaceAt(1, 0, 0));
    EXPECT_TRUE(hasGrown());
    m_scene.SetVisible(a, false);
    EXPECT_TRUE(hasGrown());
    m_scene.SetVisible(a, false);
    EXPECT_FALSE(hasGrown());
    m_scene.SetPhantom(a, true);
    EXPECT_TRUE(hasGrown());
    EXPECT_EQ(m_scene.GetPickScene(), m_scene.GetPickScene());
    EXPECT_FALSE(hasGrown());
    m_scene.RemoveShapeInstance(a);
    EXPECT_TRUE(hasGrown());
}

TEST_F(ShapeSceneTest, IsNotKeptAliveByItsPartsAndViews) {
    du::SmartPtr<ShapeScene> scene(new ShapeScene);
    const du::SmartPtr<ShapeView> view(new ShapeView(scene, 3));
    du::SmartPtr<Instance> instance;
    m_stage.AddBox("a", 0, 0, 0, {1, 1, 1})->GetInstance(instance);
    const PartPtr part = scene->CreateShapeInstance(instance);
    EXPECT_EQ(part->GetShapeScene(), scene);
    EXPECT_EQ(scene->GetReferenceCount(), 1U);
    scene = nullptr;
    EXPECT_FALSE(part->GetShapeScene());
    EXPECT_FALSE(view->GetShapeScene());
    EXPECT_FALSE(view->GetVisibilityMap());
}

TEST_F(ShapeSceneTest, HandsOutViewsByIndexUntilItCloses) {
    du::SmartPtr<View> view;
    m_scene.GetView(view);
    EXPECT_EQ(view, du::SmartPtr<View>(m_stage.GetView()));
    m_scene.GetView(view, 1);
    EXPECT_FALSE(view);
    m_scene.Close();
    EXPECT_FALSE(m_scene.GetView(0));
}

TEST_F(ShapeSceneTest, ServesThreadsThatBuildLookUpAndPick) {
    m_scene.UnregisterObserver(m_log);  // it is not made for several threads
    constexpr int kEach = 50;
    std::vector<std::thread> builders;
    for (int t = 0; t < 3; ++t) {
        builders.emplace_back([this, t] {
            for (int i = 0; i < kEach; ++i) {
                const PartPtr part = m_stage.AddBox(std::to_string(t * kEach + i), i, t, 0, {1, 1, 1});
                EXPECT_EQ(Find(part), part);
                m_scene.SetLocation(part, PlaceAt(i, t, 1));
                if (i % 2 == 0) m_scene.RemoveShapeInstance(part);
            }
        });
    }
    const dg::Ray down{{0.5, 0.5, 100}, {0, 0, -1}};
    for (int i = 0; i < 20; ++i) m_scene.GetPickScene()->Pick(down, PICK_ALL);
    for (auto& builder : builders) builder.join();
    EXPECT_EQ(m_scene.GetShapeInstances().size(), 3U * kEach / 2);
}

}  // namespace
}  // namespace zrk
