#include "du/BackLink.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>

#include "du/RefCounted.h"
#include "tests/support/OnThreads.h"

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
    constexpr std::size_t kSeekers = 2;
    for (int round = 0; round < kRounds; ++round) {
        SmartPtr<Owner> owner(new Owner);
        const auto link = owner->GetLink();
        std::atomic<int> corpses{0};
        zrtest::OnThreads(1 + kSeekers, [&](std::size_t thread) {
            if (thread == 0) {
                owner = nullptr;
            } else {
                while (const auto found = link->Lock()) corpses += found->GetMark() == kAlive ? 0 : 1;
            }
        });
        ASSERT_EQ(corpses, 0);
        ASSERT_FALSE(link->Lock());
    }
}

}  // namespace
}  // namespace du
