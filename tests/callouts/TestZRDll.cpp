#include "callouts/dll/ZRDll.h"

#include "tests/callouts/EngineFixture.h"
#include "zrk/object/MemoryPool.h"

namespace zrcallouts {
namespace {

using Slot = du::SmartPtr<du::RefCounted>;

/// Tells when it is freed.
class Witness : public virtual du::RefCounted {
public:
    explicit Witness(bool& freed) : m_freed(freed) {}
    ~Witness() override { m_freed = true; }

private:
    bool& m_freed;
};

class ZRDll : public EngineFixture {};

TEST_F(ZRDll, OtherWordsLeaveTheSlotAsItWas) {
    bool freed = false;
    Slot slot(new Witness(freed));
    const auto* before = slot.get();
    const struct {
        const char* verb;
        const char* family;
        const char* kind;
    } rows[] = {{"Create", "callouts", "calloutengine"},  {"create ", "callouts", "calloutengine"},
                {"", "callouts", "calloutengine"},        {"create", "calloutss", "calloutengine"},
                {"create", "callout", "calloutengine"},   {"create", "callouts", "CalloutEngine"},
                {"create", "callouts", "calloutengine1"}, {"creat", "callouts", "calloutengine"}};
    for (const auto& row : rows) {
        EXPECT_FALSE(ZRDllCreateComponent(row.verb, row.family, row.kind, slot))
            << row.verb << '/' << row.family << '/' << row.kind;
        EXPECT_EQ(slot.get(), before);
    }
    EXPECT_FALSE(freed);
}

TEST_F(ZRDll, AnExhaustedPoolGivesTrueAndAnEmptySlot) {
    bool freed = false;
    Slot slot(new Witness(freed));
    zrk::MemoryPool::FailNext(1);
    EXPECT_TRUE(ZRDllCreateComponent("create", "callouts", "calloutengine", slot));
    zrk::MemoryPool::FailNext(0);
    EXPECT_FALSE(slot);
    EXPECT_TRUE(freed);
}

TEST_F(ZRDll, ANewEngineIsFreeOfEverythingAndReplacesTheOneInTheSlot) {
    bool freed = false;
    Slot slot(new Witness(freed));
    ZRDllInit();
    ZRDllTerminate();
    ZRDllInit();
    ASSERT_TRUE(ZRDllCreateComponent("create", "callouts", "calloutengine", slot));
    EXPECT_TRUE(freed);
    const auto first = du::DynamicCast<Callouts>(slot);
    ASSERT_TRUE(first);
    EXPECT_FALSE(first->GetScene());
    EXPECT_FALSE(first->GetItemsList());
    EXPECT_FALSE(first->GetTemplate());
    EXPECT_FALSE(first->GetCombineForSamePart() || first->GetDrawOneForSamePart());
    EXPECT_EQ(first->GetPickRequestCount(), 0U);
    ASSERT_TRUE(ZRDllCreateComponent("create", "callouts", "calloutengine", slot));
    EXPECT_NE(slot.get(), Slot(first).get());
    EXPECT_EQ(first->GetReferenceCount(), 1U);
    ZRDllTerminate();
}

}  // namespace
}  // namespace zrcallouts
