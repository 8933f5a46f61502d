#include "app/document/Structure.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "tests/app/document/AssemblyMaker.h"

namespace zrsheet {
namespace {

using testing::ElementsAre;
using testing::Pair;
using Names = std::vector<std::string>;

Names NamesOf(const Assembly& assembly) {
    Names names;
    for (const auto& node : assembly.nodes) names.push_back(node.name);
    return names;
}

std::vector<int> ParentsOf(const Assembly& assembly) {
    std::vector<int> parents;
    for (const auto& node : assembly.nodes) parents.push_back(node.parent);
    return parents;
}

std::array<double, 3> PlaceOf(const AssemblyNode& node) {
    return {node.matrix[12], node.matrix[13], node.matrix[14]};
}

/// A frame, a chain of two wrappers around a bolt, and a pump whose only child is an assembly of two.
Assembly WrappedMachine() {
    AssemblyMaker maker;
    const int bolt = maker.Box("bolt", 1, 1, 1);
    const int machine = maker.Node("Machine", -1, -1);
    maker.Node("Frame", machine, bolt);
    const int outer = maker.Node("Bolt M8", machine, -1, {100, 0, 0});
    const int inner = maker.Node("Group", outer, -1, {10, 0, 0});
    maker.At(inner).matrix = QuarterTurn();
    maker.Node("Body.001", inner, bolt, {1, 0, 0});
    const int pump = maker.Node("Pump", machine, -1, {0, 5, 0});
    const int rotor = maker.Node("Rotor", pump, -1, {0, 0, 7});
    maker.Node("Shaft", rotor, bolt);
    maker.Node("Key", rotor, bolt, {3, 0, 0});
    return maker.Get();
}

// The child's own transform comes first, then that of each wrapper from the inside out.
TEST(WithoutWrappers, PutsTheTransformsOfAChainTogether) {
    const Assembly folded = WithoutWrappers(WrappedMachine());
    EXPECT_THAT(PlaceOf(folded.nodes[2]), ElementsAre(100, 1, 0));
    EXPECT_EQ(folded.nodes[2].matrix[1], 1.0) << "the turn is lost";
    EXPECT_THAT(PlaceOf(folded.nodes[3]), ElementsAre(0, 5, 7));
    EXPECT_THAT(PlaceOf(folded.nodes[5]), ElementsAre(3, 0, 0));
}

TEST(WithoutWrappers, PassesOnPropertiesThatTheNodeHasNoneOf) {
    AssemblyMaker maker;
    const int part = maker.Box("part", 1, 1, 1);
    const int wrapper = maker.Node("Washer", -1, -1);
    const int leaf = maker.Node("Solid_2", wrapper, part);
    maker.At(wrapper).properties = {{"Material", "Steel"}, {"Mass", "3"}};
    maker.At(leaf).properties = {{"Mass", "2"}};
    const Assembly folded = WithoutWrappers(maker.Get());
    ASSERT_EQ(NamesOf(folded), Names{"Washer"});
    EXPECT_EQ(folded.nodes[0].part, part);
    EXPECT_THAT(folded.nodes[0].properties, ElementsAre(Pair("Mass", "2"), Pair("Material", "Steel")));
}

TEST(WithProductAtTop, TakesTheOnlyRootForTheProduct) {
    AssemblyMaker maker("file");
    const int part = maker.Box("part", 1, 1, 1);
    const int top = maker.Node("Gearbox", -1, -1, {10, 0, 0});
    const int sub = maker.Node("Cover", top, -1, {1, 0, 0});
    maker.Node("Lid", sub, part, {5, 0, 0});
    maker.Node("Seal", top, part);
    maker.At(top).matrix[0] = 2.0;
    const Assembly product = WithProductAtTop(maker.Get());
    EXPECT_EQ(product.name, "Gearbox");
    EXPECT_EQ(NamesOf(product), (Names{"Cover", "Lid", "Seal"}));
    EXPECT_EQ(ParentsOf(product), (std::vector<int>{-1, 0, -1}));
    EXPECT_THAT(PlaceOf(product.nodes[0]), ElementsAre(12, 0, 0))
        << "the product's own transform must reach its children";
    EXPECT_THAT(PlaceOf(product.nodes[1]), ElementsAre(5, 0, 0)) << "and not those below them";
}

// Identifiers, ids and the selection by path rest on paths that are all different.
TEST(InstancePaths, AreUniqueWhateverTheNames) {
    AssemblyMaker maker;
    const int part = maker.Box("part", 1, 1, 1);
    const int a = maker.Node("a", -1, -1);
    maker.Node("b", a, part);
    for (const char* name :
         {"a/b", "Screw", "Screw", "Screw:2", "Screw:2", "Screw", "Screw:3", "Screw:2:2", ""}) {
        maker.Node(name, -1, part);
    }
    const auto paths = InstancePaths(maker.Get());
    EXPECT_EQ(std::set<std::string>(paths.begin(), paths.end()).size(), paths.size())
        << testing::PrintToString(paths);
}

TEST(PartNames, AreWhatTheInstancesShare) {
    struct Row {
        const char* mesh;
        Names instances;
        const char* name;
    };
    const std::vector<Row> rows{
        {"mesh12", {"Screw_1", "Screw_2", "Screw_10"}, "Screw"},
        {"mesh12", {"Screw.001"}, "Screw.001"},                  // one instance: its own name, whatever it is
        {"Bracket", {"left holder", "right mount"}, "Bracket"},  // nothing shared: the mesh's name
        {"Solid", {"left holder", "right mount"}, "left holder"},            // which tells nothing either
        {"Bolt", {"Part_1", "Part_2"}, "Bolt"},                              // what they share tells nothing
        {"mesh", {"Schraube \xC3\xA4x", "Schraube \xC3\xB6x"}, "Schraube"},  // not half of a letter
    };
    for (const Row& row : rows) {
        AssemblyMaker maker;
        const int part = maker.Box(row.mesh, 1, 1, 1);
        for (const auto& name : row.instances) maker.Node(name, -1, part);
        EXPECT_EQ(PartNames(maker.Get()), Names{row.name}) << testing::PrintToString(row.instances);
    }
}

// Two sub-assemblies are the same thing to order when they hold the same parts in the same places; where the
// whole stands and what its instances are called does not matter.
TEST(ComponentNumbers, AreEqualForEqualSubAssemblies) {
    AssemblyMaker maker;
    const int bolt = maker.Box("bolt", 1, 1, 1);
    const int nut = maker.Box("nut", 2, 1, 1);
    const auto addPair = [&](const std::string& name, double gap, int second) {
        const int pair = maker.Node(name, -1, -1, {gap * 7, 1, 2});
        const int inner = maker.Node(name + " inner", pair, -1);
        maker.Node("x", inner, bolt);
        maker.Node("y", inner, second, {gap, 0, 0});
        return static_cast<std::size_t>(pair);
    };
    const std::size_t first = addPair("first", 0.1, nut);
    const std::size_t same = addPair("second", 0.1 + 1e-9, nut);  // another sum of the same numbers
    const std::size_t wider = addPair("third", 0.2, nut);
    const std::size_t otherPart = addPair("fourth", 0.1, bolt);
    const auto numbers = ComponentNumbers(maker.Get());
    EXPECT_EQ(numbers[first], numbers[same]);
    EXPECT_EQ(numbers[first + 1], numbers[same + 1]);
    EXPECT_NE(numbers[first], numbers[wider]);
    EXPECT_NE(numbers[first], numbers[otherPart]);
    EXPECT_NE(numbers[first], numbers[first + 1]);
    EXPECT_EQ(numbers[first + 2], numbers[otherPart + 3]) << "leaves are numbered by their part";
    EXPECT_NE(numbers[first], bolt);
    EXPECT_NE(numbers[first + 1], nut);
}

// "Screw left" and "Screw right" are both "Hex screw"; what only a program named keeps the names of its
// instances.
TEST(PartNames, ComeFromTheProductWhereTheFileTellsItFromItsInstances) {
    AssemblyMaker maker;
    const int screw = maker.Box("solid", 1, 1, 1);
    const int lid = maker.Box("solid", 2, 1, 1);
    const int top = maker.Node("Pump 1", -1, -1);
    maker.At(top).product = "Pump";
    maker.At(maker.Node("Screw left", top, screw)).product = "Hex screw";
    maker.At(maker.Node("Screw right", top, screw)).product = "Hex screw";
    const int wrapper = maker.Node("Lid 7", top, -1);
    maker.At(wrapper).product = "Lid";
    maker.At(maker.Node("Body", wrapper, lid)).product = "SOLID";
    const Assembly assembly = WithoutWrappers(maker.Get());
    EXPECT_THAT(PartNames(assembly), ElementsAre("Hex screw", "Lid"));
    EXPECT_EQ(ProductName(assembly.nodes[0]), "Pump");
    EXPECT_EQ(WithProductAtTop(assembly).name, "Pump");
    maker.At(wrapper).product = "Part";
    EXPECT_THAT(PartNames(WithoutWrappers(maker.Get())), ElementsAre("Hex screw", "Lid 7"));
}

}  // namespace
}  // namespace zrsheet
