#include "du/BackLink.h"

#include <gtest/gtest.h>

#include <atomic>
#include <barrier>
#include <memory>
#include <thread>
#include <vector>

#include "du/RefCounted.h"

namespace du {
namespace {

constexpr unsigned kAlive = 0xA11FE;

class Owner : public virtual RefCounted {
public:
    Owner() : m_link(std::make_shared<BackLink<Owner>>(this)) {}
    ~Owner() override {
        m_link->Close();
        m_mark = 0;
    }
    const std::shared_ptr<BackLink<Owner>>& GetLink() const { return m_link; }
    unsigned GetMark() const { return m_mark; }

private:
    const std::shared_ptr<BackLink<Owner>> m_link;
    unsigned m_mark = kAlive;
};

// Under a sanitizer an owner that is taken up while it is freed shows as a use after free or a double free.
TEST(BackLink, NeverTakesUpAnOwnerThatIsBeingFreed) {
    constexpr int kRounds = 2000;
    constexpr int kSeekers = 2;
    for (int round = 0; round < kRounds; ++round) {
        SmartPtr<Owner> owner(new Owner);
        const auto link = owner->GetLink();
        std::barrier start(kSeekers + 1);
        std::atomic<int> corpses{0};
        std::vector<std::thread> seekers;
        for (int i = 0; i < kSeekers; ++i) {
            seekers.emplace_back([&] {
                start.arrive_and_wait();
                while (const auto found = link->Lock()) corpses += found->GetMark() == kAlive ? 0 : 1;
            });
        }
        start.arrive_and_wait();
        owner = nullptr;
        for (auto& seeker : seekers) seeker.join();
        ASSERT_EQ(corpses, 0);
        ASSERT_FALSE(link->Lock());
    }
}

}  // namespace
}  // namespace du
