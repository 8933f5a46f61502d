#include "zrk/world/World.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <latch>
#include <thread>

#include "du/Task.h"

namespace zrk {
namespace {

class WorldTest : public testing::Test {
protected:
    void SetUp() override { World::Start(2); }
    void TearDown() override { World::Stop(); }
};

// A task that is still running asks for the world; it must not find none while it works.
TEST_F(WorldTest, StaysInPlaceUntilItsTasksAreDone) {
    class Asker : public du::Task {
    public:
        Asker(std::latch& started, std::atomic<bool>& found) : m_started(started), m_found(found) {}
        void Run() override {
            m_started.count_down();
            std::this_thread::sleep_for(std::chrono::milliseconds(30));
            m_found = static_cast<bool>(World::GetWorld());
        }

    private:
        std::latch& m_started;
        std::atomic<bool>& m_found;
    };
    std::latch started(1);
    std::atomic<bool> found{false};
    const auto world = World::GetWorld();
    ASSERT_TRUE(world->GetTaskPool()->InsertTask(new Asker(started, found)));
    started.wait();
    World::Stop();
    EXPECT_TRUE(found);
    EXPECT_FALSE(World::GetWorld());
    EXPECT_FALSE(world->GetTaskPool()->InsertTask(new Asker(started, found)));
    World::Stop();
}

}  // namespace
}  // namespace zrk
