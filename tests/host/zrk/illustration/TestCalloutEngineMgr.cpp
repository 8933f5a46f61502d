#include "zrk/illustration/CalloutEngineMgr.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>

#include "zrk/annotation/AnnoSet.h"
#include "zrk/illustration/Callouts.h"
#include "zrk/illustration/Illustration3dScene.h"
#include "zrk/scene/ShapeInstance.h"
#include "zrk/scene/ShapeView.h"
#include "zrk/tree/Instance.h"

namespace zrk::illustration {
namespace {

/// Writes down what reaches it.
class Engine : public Callouts {
public:
    explicit Engine(std::string& heard) : m_heard(heard) {}
    ~Engine() override { m_heard += '~'; }
    void OnShapeInstanceCreate(const du::SmartPtr<zrk::ShapeInstance>&) override { m_heard += '+'; }
    void OnShapeInstanceLocation(const du::SmartPtr<zrk::ShapeInstance>&) override { m_heard += '>'; }
    void OnShapeInstanceVisibility(const du::SmartPtr<zrk::ShapeInstance>&, bool visible) override {
        m_heard += visible ? '1' : '0';
    }
    void OnShapeInstanceRemove(const du::SmartPtr<zrk::ShapeInstance>&) override { m_heard += '-'; }
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
    Engine* Join() {
        auto* const engine = new Engine(m_heard);
        engine->Initialize(m_scene);
        return engine;
    }
    du::SmartPtr<zrk::ShapeInstance> Create() {
        return m_scene->CreateShapeInstance(new zrk::Instance(du::Symbol("/p"), "p", nullptr, {}));
    }
    du::SmartPtr<Callouts> Find() const {
        return CalloutEngineMgr::Instance().GetCalloutsEngineForScene(m_scene);
    }

    std::string m_heard;
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
    Join();
    shake(*main);
    EXPECT_EQ(m_heard, "");
    Find()->InitializeShapeViewObserver();
    shake(*inset);
    EXPECT_EQ(m_heard, "");
    shake(*main);
    EXPECT_EQ(m_heard, "tsb");
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
    const auto part = Create();
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
