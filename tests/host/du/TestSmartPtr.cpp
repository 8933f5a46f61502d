#include <gtest/gtest.h>

#include <utility>

#include "du/RefCounted.h"
#include "du/SmartPtr.h"

namespace du {
namespace {

/// Tells when it dies; `keeps` makes it refuse once.
class Probe : public virtual RefCounted {
public:
    explicit Probe(int& deaths) : m_deaths(deaths) {}
    ~Probe() override { ++m_deaths; }
    bool ZeroReferenceCountHook() override { return !std::exchange(m_keeps, false); }
    void KeepOnce() { m_keeps = true; }

private:
    int& m_deaths;
    bool m_keeps = false;
};

/// Refers to a further probe, like a list node.
class Node : public virtual RefCounted {
public:
    SmartPtr<Node> m_next;
};

TEST(SmartPtr, LetsTheHookKeepTheObjectAndTakeItUpAgain) {
    int deaths = 0;
    auto* const probe = new Probe(deaths);
    probe->KeepOnce();
    { const SmartPtr<Probe> only(probe); }
    ASSERT_EQ(deaths, 0);
    EXPECT_EQ(probe->GetReferenceCount(), 0U);
    { const SmartPtr<Probe> again(probe); }
    EXPECT_EQ(deaths, 1);
}

// head = head->next frees the node that the argument lies in: the argument must be taken first.
TEST(SmartPtr, TakesTheNewObjectBeforeItReleasesTheOld) {
    SmartPtr<Node> head(new Node);
    head->m_next = new Node;
    Node* const second = head->m_next.get();
    head = head->m_next;
    ASSERT_EQ(head.get(), second);
    EXPECT_EQ(head->GetReferenceCount(), 1U);
    head->m_next = new Node;
    head = std::move(head->m_next);
    EXPECT_EQ(head->GetReferenceCount(), 1U);
}

TEST(RefCounted, IsNotTakenUpAgainOnceNobodyHoldsIt) {
    Node node;
    EXPECT_FALSE(node.TryAddReference(nullptr));
    EXPECT_EQ(node.GetReferenceCount(), 0U);
    node.AddReference(nullptr);
    EXPECT_TRUE(node.TryAddReference(nullptr));
    EXPECT_EQ(node.GetReferenceCount(), 2U);
}

}  // namespace
}  // namespace du
