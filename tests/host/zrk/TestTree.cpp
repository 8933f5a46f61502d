#include "zrk/tree/Tree.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "zrk/tree/Instance.h"
#include "zrk/tree/InstanceVisitor.h"

namespace zrk {
namespace {

using InstancePtr = du::SmartPtr<Instance>;

InstancePtr Make(const std::string& name, const dg::Location& location = {}) {
    return new Instance(du::Symbol("/" + name), name, nullptr, location);
}

/// r(a(b c) d), the usual family.
InstancePtr Family() {
    const InstancePtr root = Make("r");
    const InstancePtr a = Make("a");
    a->AddChild(Make("b"));
    a->AddChild(Make("c"));
    root->AddChild(a);
    root->AddChild(Make("d"));
    return root;
}

class Names : public InstanceVisitor {
public:
    explicit Names(std::string last) : m_last(std::move(last)) {}
    bool VisitInstance(const InstancePtr& instance) override {
        m_names += instance->GetName();
        return instance->GetName() != m_last;
    }
    std::string m_names;

private:
    const std::string m_last;
};

TEST(Tree, VisitsParentsFirstAndStopsWhenTold) {
    const du::SmartPtr<Tree> tree(new Tree);
    const struct {
        const char* last;
        const char* visited;
    } rows[] = {{"", "rabcd"}, {"r", "r"}, {"b", "rab"}, {"d", "rabcd"}};
    Names nobody("");
    tree->Visit(nobody, 0);
    EXPECT_EQ(nobody.m_names, "");
    tree->SetRoot(Family());
    for (const auto& row : rows) {
        Names names(row.last);
        tree->Visit(names, 0);
        EXPECT_EQ(names.m_names, row.visited);
    }
}

// Freed by recursion such a chain would need a stack frame a node.
TEST(Instance, FreesAChainOfAHundredThousandWithoutTheStack) {
    constexpr int kDepth = 100000;
    InstancePtr root = Make("0");
    InstancePtr last = root;
    InstancePtr middle;
    for (int i = 1; i < kDepth; ++i) {
        const InstancePtr next = Make("n");
        last->AddChild(next);
        last = next;
        if (i == kDepth / 2) middle = next;
    }
    root = nullptr;
    EXPECT_EQ(middle->GetReferenceCount(), 1U);  // the upper half is gone
    EXPECT_EQ(last->GetReferenceCount(), 2U);    // the lower one is not
    middle = nullptr;
    EXPECT_EQ(last->GetReferenceCount(), 1U);
}

}  // namespace
}  // namespace zrk
