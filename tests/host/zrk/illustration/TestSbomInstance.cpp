#include "zrk/illustration/SbomInstance.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>

#include "zrk/tree/ComponentNode.h"

namespace zrk::illustration {
namespace {

using SbomPtr = du::SmartPtr<SbomInstance>;

/// r( A( b  W*( c  V*( d e ) ) ) f ): assemblies in capitals, welds with a star. Every node shows an
/// instance.
class SbomInstanceTest : public testing::Test {
protected:
    void SetUp() override {
        for (const char* link : {"rA", "Ab", "AW", "Wc", "WV", "Vd", "Ve", "rf"}) {
            Node(link[0])->AddChild(Node(link[1]));
        }
        Node('W')->SetWeld(true);
        Node('V')->SetWeld(true);
    }
    SbomPtr Node(char name) {
        SbomPtr& node = m_nodes[name];
        if (!node) {
            const std::string text(1, name);
            node = new SbomInstance(du::Symbol(text), text);
            node->SetEbomInstance(new Instance(du::Symbol("/" + text), text, nullptr, {}));
        }
        return node;
    }
    static std::string Names(const SbomInstance::InstanceSet& instances) {
        std::string names;
        for (const auto& instance : instances) names += instance->GetName();
        std::sort(names.begin(), names.end());
        return names;
    }

    std::map<char, SbomPtr> m_nodes;
};

TEST_F(SbomInstanceTest, KnowsWeldsAboveIt) {
    const struct {
        char node;
        bool isMember;
        char topWeld;  // '-' for none
    } rows[] = {{'r', false, '-'}, {'b', false, '-'}, {'W', false, 'W'},
                {'c', true, 'W'},  {'V', true, 'W'},  {'d', true, 'W'}};
    for (const auto& row : rows) {
        EXPECT_EQ(Node(row.node)->IsWeldMember(), row.isMember) << row.node;
        const auto top = Node(row.node)->GetTopWeld();
        EXPECT_EQ(top ? top->GetName() : "-", std::string(1, row.topWeld)) << row.node;
    }
}

TEST_F(SbomInstanceTest, StandsForThePartsBelowAndTellsThoseListedByThemselves) {
    for (const char listed : {'b', 'd', 'W'}) Node(listed)->SetCarriesItem(true);
    const struct {
        char node;
        const char* first;
        const char* second;
    } rows[] = {
        {'r', "bcdef", "d"},  // b is listed, but is no member of a weld
        {'W', "cde", "d"},   {'V', "de", "d"}, {'d', "d", ""}, {'f', "f", ""},
    };
    for (const auto& row : rows) {
        SbomInstance::InstanceSet first, second;
        Node(row.node)->GetEbomInstancesForWeld(first, second);
        EXPECT_EQ(Names(first), row.first) << row.node;
        EXPECT_EQ(Names(second), row.second) << row.node;
    }
}

TEST_F(SbomInstanceTest, IsFoundFromItsInstanceUntilEitherGoes) {
    const du::SmartPtr<Instance> instance = Node('b')->GetEbomInstance();
    EXPECT_EQ(instance->GetSbomInstance(), Node('b').get());
    Node('c')->SetEbomInstance(instance);  // another one shows it now
    Node('b')->SetEbomInstance(nullptr);
    EXPECT_EQ(instance->GetSbomInstance(), Node('c').get());
    Node('W')->SetEbomInstance(nullptr);
    const SbomPtr weld = Node('W');
    SbomPtr parent;
    weld->GetParent(parent);
    EXPECT_EQ(parent, Node('A'));
    parent = nullptr;
    const SbomPtr c = Node('c');
    m_nodes.clear();
    weld->GetParent(parent);
    EXPECT_FALSE(parent);
    EXPECT_EQ(instance->GetSbomInstance(), c.get());
}

TEST_F(SbomInstanceTest, LeavesNoPointerToItselfBehind) {
    const du::SmartPtr<Instance> d = Node('d')->GetEbomInstance();
    m_nodes.clear();
    EXPECT_EQ(d->GetSbomInstance(), nullptr);
}

TEST_F(SbomInstanceTest, AsksItsInstanceForPropertiesThatItLacks) {
    const du::Symbol group("g"), own("own"), below("below"), none("none");
    Node('b')->SetProperty(group, own, du::Symbol("1"));
    Node('b')->GetEbomInstance()->SetProperty(group, own, du::Symbol("2"));
    Node('b')->GetEbomInstance()->SetProperty(group, below, du::Symbol("3"));
    const auto value = [&](const du::Symbol& name) {
        const auto property = Node('b')->QueryProperty(group, name, du::Symbol());
        du::Symbol text("none");
        if (property) property->GetValue(text, "");
        return text.Text();
    };
    EXPECT_EQ(value(own), "1");
    EXPECT_EQ(value(below), "3");
    EXPECT_EQ(value(none), "none");
    Node('b')->SetEbomInstance(nullptr);
    EXPECT_EQ(value(below), "none");
}

TEST(SbomInstance, FreesAChainOfAHundredThousandWithoutTheStack) {
    SbomPtr root(new SbomInstance(du::Symbol("0"), "0"));
    SbomPtr last = root;
    for (int i = 1; i < 100000; ++i) {
        const SbomPtr next(new SbomInstance(du::Symbol("n"), "n"));
        last->AddChild(next);
        last = next;
    }
    EXPECT_FALSE(last->IsWeldMember());
    root = nullptr;
    EXPECT_EQ(last->GetReferenceCount(), 1U);
}

}  // namespace
}  // namespace zrk::illustration
