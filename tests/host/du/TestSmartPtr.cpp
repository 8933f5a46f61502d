#include <gtest/gtest.h>

#include <utility>

#include "du/ConstSmartPtr.h"
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

TEST(SmartPtr, DeletesOnceWithTheLastHolder) {
    int deaths = 0;
    {
        SmartPtr<Probe> first(new Probe(deaths));
        const SmartPtr<RefCounted> asBase = first;
        SmartPtr<Probe> moved = std::move(first);
        EXPECT_FALSE(first);  // NOLINT: a moved-from pointer is empty
        EXPECT_EQ(moved->GetReferenceCount(), 2U);
        moved = nullptr;
        EXPECT_EQ(deaths, 0);
        EXPECT_EQ(asBase->GetReferenceCount(), 1U);
    }
    EXPECT_EQ(deaths, 1);
}

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

TEST(SmartPtr, KeepsTheObjectWhenAssignedToItself) {
    int deaths = 0;
    SmartPtr<Probe> holder(new Probe(deaths));
    SmartPtr<Probe>& same = holder;
    holder = same;
    EXPECT_EQ(deaths, 0);
    holder = std::move(same);
    ASSERT_TRUE(holder);
    EXPECT_EQ(deaths, 0);
    EXPECT_EQ(holder->GetReferenceCount(), 1U);
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

TEST(SmartPtr, CastsAndComparesByObject) {
    int deaths = 0;
    const SmartPtr<Probe> probe(new Probe(deaths));
    const SmartPtr<RefCounted> base = probe;
    EXPECT_EQ(DynamicCast<Probe>(base).get(), probe.get());
    EXPECT_FALSE(DynamicCast<Node>(base));
    EXPECT_FALSE(base < base);
    const ConstSmartPtr<Probe> readOnly = probe;
    EXPECT_EQ(readOnly->GetReferenceCount(), 3U);
}

TEST(RefCounted, CopiesStartWithACountOfTheirOwn) {
    class Value : public virtual RefCounted {};
    const SmartPtr<Value> held(new Value);
    const SmartPtr<Value> copy(new Value(*held));
    EXPECT_EQ(copy->GetReferenceCount(), 1U);
    *copy = *held;
    EXPECT_EQ(copy->GetReferenceCount(), 1U);
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
