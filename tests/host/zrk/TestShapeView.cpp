#include "zrk/scene/ShapeView.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>

#include "tests/host/zrk/Stage.h"
#include "zrk/event/PickEvent.h"
#include "zrk/world/Kernel.h"

namespace zrk {
namespace {

const du::Flags kSolid = PICK_ALL | PICK_EXCLUDE_PHANTOM;

/// Writes down what it met, then does something.
class LoggedPick : public PickEvent {
public:
    LoggedPick(std::string& log, std::function<void()> then) : m_log(log), m_then(std::move(then)) {}
    void OnComplete(int status) override {
        m_log += std::to_string(status);
        for (const auto& result : GetResults())
            m_log += Stage::NameOf(du::DynamicCast<ShapeInstance>(result.GetObject()));
        m_log += ' ';
        if (m_then) m_then();
    }

private:
    std::string& m_log;
    std::function<void()> m_then;
};

class ShapeViewTest : public testing::Test {
protected:
    Stage m_stage;
    ShapeScene& m_scene = *m_stage.GetScene();
    ShapeView& m_view = *m_stage.GetView();
    /// A floor of 40 x 40 pixels with its upper left corner at the pixel (100, 60), and a lid above its
    /// middle.
    const Stage::PartPtr m_floor = m_stage.AddBox("floor", 0, 0, 0, {40, 40, 1});
    const Stage::PartPtr m_lid = m_stage.AddBox("lid", 10, 10, 5, {20, 20, 1});
};

TEST_F(ShapeViewTest, MeetsTheNearestPartUnderTheExactPixel) {
    const struct {
        int x;
        int y;
        const char* part;
    } rows[] = {
        {120, 80, "lid"},   {109, 80, "floor"}, {111, 89, "lid"}, {111, 91, "floor"},
        {101, 99, "floor"}, {141, 99, ""},      {99, 80, ""},     {120, 59, ""},
        {120, 101, ""},     {0, 0, ""},         {-500, 9999, ""},  // outside the picture is no error
    };
    for (const auto& row : rows) EXPECT_EQ(m_stage.Pick(row.x, row.y), row.part) << row.x << ", " << row.y;
}

TEST_F(ShapeViewTest, LooksThroughPhantomsOnlyWhenAskedTo) {
    m_scene.SetPhantom(m_lid, true);
    EXPECT_EQ(m_stage.Pick(120, 80), "lid");
    EXPECT_EQ(m_stage.Pick(120, 80, kSolid), "floor");
    EXPECT_EQ(m_stage.PickOnly(m_lid, 120, 80), "lid");
    EXPECT_EQ(m_stage.PickOnly(m_lid, 120, 80, kSolid), "");
    m_scene.SetPhantom(m_lid, false);
    EXPECT_EQ(m_stage.Pick(120, 80, kSolid), "lid");
}

TEST_F(ShapeViewTest, MeetsOnePartAsIfItWereAlone) {
    EXPECT_EQ(m_stage.PickOnly(m_floor, 120, 80), "floor");
    EXPECT_EQ(m_stage.PickOnly(m_lid, 109, 80), "");
    Stage other;
    EXPECT_EQ(m_stage.PickOnly(other.AddBox("stranger", 0, 0, 0, {40, 40, 1}), 120, 80), "");
}

// The picture of rays is kept between picks; every way to change the scene must renew it.
TEST_F(ShapeViewTest, FollowsTheSceneAfterEveryKindOfChange) {
    EXPECT_EQ(m_stage.Pick(120, 80), "lid");
    m_scene.SetVisible(m_lid, false);
    EXPECT_EQ(m_stage.Pick(120, 80), "floor");
    EXPECT_EQ(m_stage.PickOnly(m_lid, 120, 80), "");
    m_scene.SetVisible(m_lid, true);
    m_scene.SetLocation(m_lid, PlaceAt(-30, 10, 5, {20, 20, 1}));
    EXPECT_EQ(m_stage.Pick(120, 80), "floor");
    EXPECT_EQ(m_stage.Pick(80, 80), "lid");
    m_scene.RemoveShapeInstance(m_floor);
    EXPECT_EQ(m_stage.Pick(120, 80), "");
    m_stage.AddBox("new", 0, 0, 0, {40, 40, 1});
    EXPECT_EQ(m_stage.Pick(120, 80), "new");
}

// Picks that wait are answered together, but as if each were alone.
TEST_F(ShapeViewTest, AnswersWhatWaitsInItsOrderAndAsTheSceneThenIs) {
    const auto kernel = Kernel::GetKernel();
    std::string log;
    const auto send = [&](std::function<void()> then) {
        const du::SmartPtr<PickEvent> pick(new LoggedPick(log, std::move(then)));
        kernel->ManageObject(pick);
        m_view.Pick(120, 80, PICK_ALL, pick.get());
    };
    send({});
    send([&] { m_scene.SetVisible(m_lid, false); });
    send([&] { send([&] { m_scene.RemoveShapeInstance(m_floor); }); });
    send({});
    kernel->DispatchEvents();
    EXPECT_EQ(log, "0lid 0lid 0floor 0floor 0floor ");
    log.clear();
    send([&] { kernel->CancelPendingEvents(); });
    send({});
    kernel->DispatchEvents();
    EXPECT_EQ(log, "0 1 ") << "nothing is left to be met, and the second was cancelled";
}

TEST_F(ShapeViewTest, CompletesPicksThatNobodyCanAnswer) {
    const auto pick = [](ShapeView& view) {
        const du::SmartPtr<PickEvent> event(new PickEvent);
        view.Pick(120, 80, PICK_ALL, event.get());
        return event;
    };
    const auto stopped = pick(m_view);
    Kernel::Stop();
    const auto late = pick(m_view);
    Kernel::Start();
    const du::SmartPtr<ShapeView> orphan(new ShapeView(du::SmartPtr<ShapeScene>(new ShapeScene), 2));
    const auto sceneless = pick(*orphan);
    Kernel::GetKernel()->DispatchEvents();
    for (const auto& event : {stopped, late, sceneless}) {
        EXPECT_TRUE(event->IsCompleted());
        EXPECT_TRUE(event->GetResults().empty());
    }
}

}  // namespace
}  // namespace zrk
