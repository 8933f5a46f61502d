#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <vector>

#include "app/sample/GearReducer.h"
#include "app/sample/GlbWriter.h"
#include "app/sample/SyntheticAssembly.h"
#include "tests/app/import/ImportFixture.h"
#include "tests/app/import/SolidChecks.h"

namespace zrsheet {
namespace {

class Sample : public ImportFixture {};

TEST_F(Sample, HasClosedPartsThatFaceOutwards) {
    for (const AssemblyPart& part : MakeGearReducer().parts) {
        ExpectClosed(part);
        EXPECT_GT(Volume(part), 100) << part.name;
    }
}

TEST_F(Sample, IsAnAssemblyWorthASheetAndSurvivesItsFile) {
    const Assembly made = MakeGearReducer();
    const std::string bytes = WriteGlb(made);
    EXPECT_EQ(bytes, WriteGlb(MakeGearReducer()));
    Assembly read = ImportModel(Write("reducer.glb", bytes));
    const auto instances =
        std::ranges::count_if(read.nodes, [](const AssemblyNode& node) { return node.part >= 0; });
    EXPECT_THAT(instances, testing::AllOf(testing::Ge(40), testing::Le(200)));
    ASSERT_EQ(read.parts.size(), made.parts.size());
    ASSERT_EQ(read.nodes.size(), made.nodes.size());
    for (std::size_t i = 0; i < made.nodes.size(); ++i) {
        const AssemblyNode& node = read.nodes[i];
        EXPECT_EQ(node.name, made.nodes[i].name);
        EXPECT_EQ(node.parent, made.nodes[i].parent);
        EXPECT_EQ(node.matrix, made.nodes[i].matrix);
        EXPECT_EQ(node.properties, made.nodes[i].properties);
        EXPECT_EQ(node.part < 0 ? "" : read.parts[static_cast<std::size_t>(node.part)].name,
                  made.nodes[i].part < 0 ? "" : made.nodes[i].name);
    }
}

// The sizes are flat, deep, shared, and smaller than their levels could hold.
TEST_F(Sample, HasSyntheticAssembliesOfAnySizeThatSurviveTheirFile) {
    const SyntheticSize sizes[] = {{1, 1, 0}, {50, 50, 0}, {400, 30, 6}, {1000, 1000, 3}};
    for (const SyntheticSize& size : sizes) {
        const Assembly made = MakeSyntheticAssembly(size);
        for (const AssemblyPart& part : made.parts) {
            ExpectClosed(part);
            EXPECT_GT(Volume(part), 100) << part.name;
        }
        Assembly read = ImportModel(Write("synthetic.glb", WriteGlb(made)));
        EXPECT_EQ(static_cast<int>(read.parts.size()), size.parts);
        EXPECT_EQ(read.nodes.size(), made.nodes.size());
        std::set<std::array<double, 3>> places;
        std::vector<std::array<double, 4>> ends;
        for (const AssemblyNode& node : made.nodes) {
            std::array<double, 4> end{node.matrix[12], node.matrix[13], node.matrix[14], 0};
            if (node.parent >= 0) {
                const auto& above = ends[static_cast<std::size_t>(node.parent)];
                for (std::size_t i = 0; i < 3; ++i) end[i] = std::round((end[i] + above[i]) * 1e6) / 1e6;
                end[3] = above[3] + 1;
            }
            ends.push_back(end);
            if (node.part < 0) continue;
            EXPECT_TRUE(places.insert({end[0], end[1], end[2]}).second) << "two in one place";
            EXPECT_LE(end[3], size.levels + 1);
            EXPECT_LT(std::max({end[0], end[1], end[2]}), 0.03 * std::ceil(std::cbrt(size.instances)));
        }
        EXPECT_EQ(static_cast<int>(places.size()), size.instances);
    }
}

}  // namespace
}  // namespace zrsheet
