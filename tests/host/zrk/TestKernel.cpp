#include "zrk/world/Kernel.h"

#include <gtest/gtest.h>

#include <atomic>
#include <latch>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/OnThreads.h"
#include "zrk/event/AsyncEvent.h"
#include "zrk/world/Burst.h"

namespace zrk {
namespace {

class Event : public AsyncEvent {
public:
    void OnProgress(unsigned char percent) override { m_heard += std::to_string(percent) + "% "; }
    void OnComplete(int status) override { m_heard += "complete " + std::to_string(status) + ' '; }
    void OnStatus(int status) override { m_heard += "status " + std::to_string(status); }
    const std::string& Heard() const { return m_heard; }

private:
    std::string m_heard;
};

class KernelTest : public testing::Test {
protected:
    void SetUp() override {
        Kernel::Start();
        m_kernel = Kernel::GetKernel();
    }
    void TearDown() override { Kernel::Stop(); }

    /// Work that writes down its name and its status.
    Kernel::Work Note(const std::string& name) {
        return [this, name](int status) { m_log += name + std::to_string(status) + ' '; };
    }

    du::SmartPtr<Kernel> m_kernel;
    std::string m_log;
};

TEST_F(KernelTest, PumpsInOrderAndWhatIsPostedMeanwhile) {
    m_kernel->Post([this](int status) {
        Note("a")(status);
        m_kernel->Post(Note("c"));
    });
    m_kernel->Post(Note("b"));
    EXPECT_EQ(m_log, "");  // posting only queues
    EXPECT_EQ(m_kernel->DispatchEvents(), 3U);
    EXPECT_EQ(m_log, "a0 b0 c0 ");
    EXPECT_EQ(m_kernel->DispatchEvents(), 0U);
}

// A hundred answers that each change one callout must not have it looked at a hundred times.
TEST_F(KernelTest, TellsOfEachObjectOnceWhenAllIsAnswered) {
    const auto change = [this](const char& object) {
        Burst::Note(&object, [this, &object] {
            m_log += object;
            m_kernel->Post(Note("asked"));
        });
    };
    const char objects[] = {'A', 'B'};
    m_kernel->Post([&](int) {
        change(objects[0]);
        change(objects[1]);
        change(objects[0]);
    });
    m_kernel->Post(Note("answered"));
    EXPECT_EQ(m_kernel->DispatchEvents(), 4U);
    EXPECT_EQ(m_log, "answered0 ABasked0 asked0 ");
    m_log.clear();
    change(objects[0]);
    EXPECT_EQ(m_log, "A") << "nothing to wait for";
}

TEST_F(KernelTest, CancelsEverythingOnceWithStatusOne) {
    const du::SmartPtr<Event> posted(new Event);
    const du::SmartPtr<Event> managed(new Event);
    const du::SmartPtr<Event> done(new Event);
    m_kernel->ManageObject(posted);
    m_kernel->ManageObject(managed);
    m_kernel->ManageObject(done);
    done->Complete(0);
    m_kernel->Post(Note("a"));
    m_kernel->Post([posted](int status) { posted->Complete(status); });
    m_kernel->CancelPendingEvents();
    EXPECT_EQ(m_log, "a1 ");
    EXPECT_EQ(posted->Heard(), "complete 1 status 1");
    EXPECT_EQ(managed->Heard(), "complete 1 status 1");
    EXPECT_EQ(done->Heard(), "complete 0 status 0");
    EXPECT_TRUE(m_kernel->GetManaged().empty());
    m_kernel->Post(Note("b"));  // a cancelled kernel goes on
    m_kernel->DispatchEvents();
    EXPECT_EQ(m_log, "a1 b0 ");
}

// Somebody may have asked for the kernel just before it stopped; what he posts must not wait for ever.
TEST_F(KernelTest, CancelsWhatIsPostedWhileAndAfterItStops) {
    m_kernel->Post([this](int status) {
        Note("a")(status);
        m_kernel->Post(Note("meanwhile"));
    });
    Kernel::Stop();
    EXPECT_EQ(m_log, "a1 meanwhile1 ");
    m_kernel->Post(Note("after"));
    EXPECT_EQ(m_log, "a1 meanwhile1 after1 ");
    EXPECT_FALSE(Kernel::GetKernel());
}

TEST_F(KernelTest, DispatchesOnAThreadOfItsOwnInTheOrderOfEachPoster) {
    constexpr int kEach = 300;
    std::vector<std::vector<int>> seen(3);
    std::atomic<bool> strangers{false};
    std::latch done(3 * kEach);
    m_kernel->StartDispatcher();
    const auto self = std::this_thread::get_id();
    zrtest::OnThreads(seen.size(), [&](std::size_t thread) {
        const auto poster = std::this_thread::get_id();
        for (int i = 0; i < kEach; ++i) {
            m_kernel->Post([&, poster, thread, i](int) {
                if (std::this_thread::get_id() == poster || std::this_thread::get_id() == self)
                    strangers = true;
                seen[thread].push_back(i);
                done.count_down();
            });
        }
    });
    done.wait();
    m_kernel->StopDispatcher();
    for (const auto& mine : seen) EXPECT_TRUE(std::is_sorted(mine.begin(), mine.end()));
    EXPECT_FALSE(strangers);
}

}  // namespace
}  // namespace zrk
