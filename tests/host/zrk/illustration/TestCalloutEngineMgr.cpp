#include "zrk/illustration/CalloutEngineMgr.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>

#include "zrk/illustration/Callouts.h"
#include "zrk/illustration/Illustration3dScene.h"
#include "zrk/scene/ShapeInstance.h"
#include "zrk/scene/ShapeView.h"
#include "zrk/tree/Instance.h"

namespace zrk::illustration {
namespace {

/// Writes down what reaches it of the view.
class Engine : public Callouts {
public:
    explicit Engine(std::string& heard) : m_heard(heard) {}
    void OnHandleTimeoutEvent(const du::SmartPtr<zrk::ShapeView>&, dg::Camera3D&) override { m_heard += 't'; }
    void OnBackgroundColor(const du::SmartPtr<zrk::ShapeView>&) override { m_heard += 'b'; }
    void OnWindowSize() override { m_heard += 's'; }
    void GetCalloutSetForSbomInstance(const du::SmartPtr<SbomInstance>&,
                                      std::set<du::SmartPtr<zrannotations::Callout>>&) override {}

private:
    std::string& m_heard;
};

class CalloutEngineMgrTest : public testing::Test {
protected:
    void TearDown() override { m_scene->Close(); }
    du::SmartPtr<Callouts> Find() const {
        return CalloutEngineMgr::Instance().GetCalloutsEngineForScene(m_scene);
    }

    const du::SmartPtr<zrk::ShapeScene> m_scene{new Illustration3dScene};
};

TEST_F(CalloutEngineMgrTest, CarriesTheMainViewOnlyAndOnlyWhenAsked) {
    const du::SmartPtr<zrk::ShapeView> main(new zrk::ShapeView(m_scene, 1));
    const du::SmartPtr<zrk::ShapeView> inset(new zrk::ShapeView(m_scene, 2));
    m_scene->AddView(main);
    m_scene->AddView(inset);
    const auto shake = [](zrk::ShapeView& view) {
        view.OnTimer();
        view.Resize(10, 10);
        view.SetBackgroundColors({}, {}, {});
    };
    std::string heard;
    (new Engine(heard))->Initialize(m_scene);
    shake(*main);
    EXPECT_EQ(heard, "");
    Find()->InitializeShapeViewObserver();
    shake(*inset);
    EXPECT_EQ(heard, "");
    shake(*main);
    EXPECT_EQ(heard, "tsb");
}

// A scene that changes on one thread while the engine goes on another must never call into a dead engine.
TEST_F(CalloutEngineMgrTest, SurvivesEnginesThatGoWhileTheSceneChanges) {
    class SilentEngine : public Callouts {
    public:
        ~SilentEngine() override { m_isAlive = false; }
        void OnShapeInstanceLocation(const du::SmartPtr<zrk::ShapeInstance>&) override {
            EXPECT_TRUE(m_isAlive);
        }
        void GetCalloutSetForSbomInstance(const du::SmartPtr<SbomInstance>&,
                                          std::set<du::SmartPtr<zrannotations::Callout>>&) override {}

    private:
        std::atomic<bool> m_isAlive{true};
    };
    const auto part = m_scene->CreateShapeInstance(new zrk::Instance(du::Symbol("/p"), "p", nullptr, {}));
    std::atomic<bool> isOver{false};
    std::thread mover([&] {
        while (!isOver) m_scene->SetLocation(part, {});
    });
    for (int round = 0; round < 300; ++round) {
        (new SilentEngine)->Initialize(m_scene);
        if (const auto engine = Find()) engine->Destroy();
    }
    isOver = true;
    mover.join();
    EXPECT_FALSE(Find());
}

}  // namespace
}  // namespace zrk::illustration
