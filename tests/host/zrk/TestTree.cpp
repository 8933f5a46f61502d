#include "zrk/tree/Tree.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

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

class TreeListener : public TreeObserver {
public:
    explicit TreeListener(std::string& heard, bool framed = true) : m_heard(heard), m_isFramed(framed) {}
    bool RequiresBeginEnd() const override { return m_isFramed; }
    void OnBeginUpdate() override { m_heard += '('; }
    void OnEndUpdate() override { m_heard += ')'; }
    void OnInstanceInserted(const InstancePtr& instance) override { m_heard += instance->GetName(); }
    void OnInstancePropertyValueChanged(const InstancePtr& instance) override {
        m_heard += "p" + instance->GetName();
    }
    int OnDestroy() override {
        m_heard += '!';
        return 0;
    }

private:
    std::string& m_heard;
    const bool m_isFramed;
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

TEST(Tree, TellsItsObserversFramedAndOfItsEnd) {
    std::string heard;
    std::string unframed;
    du::SmartPtr<Tree> tree(new Tree);
    const du::SmartPtr<TreeListener> listener(new TreeListener(heard));
    const du::SmartPtr<TreeListener> plain(new TreeListener(unframed, false));
    const du::SmartPtr<TreeListener> left(new TreeListener(heard));
    tree->RegisterObserver(listener, true);
    tree->RegisterObserver(plain, false);
    tree->RegisterObserver(left, false);
    tree->UnregisterObserver(left);
    const InstancePtr root = Family();
    tree->SetRoot(root);
    tree->BeginUpdate();
    tree->ChangeProperty(root->GetChildren()[0], du::Symbol("g"), du::Symbol("n"), du::Symbol("v"));
    tree->EndUpdate();
    tree = nullptr;
    EXPECT_EQ(heard, "(r)(pa)!");
    EXPECT_EQ(unframed, "rpa!");
}

TEST(Instance, StandsWhereItsAncestorsPutIt) {
    const InstancePtr top =
        Make("t", {dg::FMat33({0, 1, 0, -1, 0, 0, 0, 0, 1}), {100, 0, 0}});  // a quarter turn
    const InstancePtr middle = Make("m", {dg::FMat33::Scale({2, 2, 2}), {10, 0, 0}});
    const InstancePtr leaf = Make("l", {dg::FMat33(), {1, 2, 3}});
    top->AddChild(middle);
    middle->AddChild(leaf);
    const dg::DPoint3D corner = dg::DPoint3D(1, 0, 0) * leaf->GetWorldLocation();
    EXPECT_EQ(corner, dg::DPoint3D(96, 14, 6));
    InstancePtr root;
    leaf->GetRootContainerRoot(root);
    EXPECT_EQ(root, top);
    root->GetRootContainerRoot(root);
    EXPECT_EQ(root, top);
}

TEST(Instance, LosesItsParentWhenThatGoes) {
    InstancePtr root = Family();
    const InstancePtr a = root->GetChildren()[0];
    InstancePtr parent;
    a->GetParent(parent);
    EXPECT_EQ(parent, root);
    parent = nullptr;
    root = nullptr;
    a->GetParent(parent);
    EXPECT_FALSE(parent);
    EXPECT_EQ(a->GetChildren().size(), 2U);  // and keeps its own
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

TEST(BaseInstance, FindsPropertiesOfTheSourceBeforeThoseOfAll) {
    const InstancePtr part = Make("p");
    const du::Symbol group("g"), name("n"), other("o"), source("s");
    part->SetProperty(group, name, du::Symbol("general"));
    part->SetProperty(group, name, du::Symbol("special"), source);
    part->SetProperty(group, other, du::Symbol("old"));
    part->SetProperty(group, other, du::Symbol("new"));
    du::Symbol value("untouched");
    EXPECT_FALSE(part->FindProperty(other, name, source, value));
    EXPECT_EQ(value.Text(), "untouched");
    const struct {
        std::vector<du::Symbol> groups;
        std::vector<du::Symbol> names;
        du::Symbol source;
        const char* text;  // null: not found
    } rows[] = {
        {{group}, {name}, source, "special"},
        {{group}, {name}, du::Symbol("t"), "general"},
        {{group}, {other}, source, "new"},
        {{group, group}, {other, name}, source, "new\x1fspecial"},
        {{group, group}, {name, du::Symbol("x")}, source, nullptr},
        {{group, group}, {name}, source, nullptr},
        {{}, {}, source, ""},
    };
    for (const auto& row : rows) {
        const auto found = part->LookUpProperty(row.groups, row.names, row.source);
        ASSERT_EQ(static_cast<bool>(found), row.text != nullptr);
        if (found) {
            EXPECT_EQ(found->GetSymbol().Text(), row.text);
        }
    }
}

}  // namespace
}  // namespace zrk
