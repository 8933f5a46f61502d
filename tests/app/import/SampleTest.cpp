#include <gmock/gmock.h>

#include <algorithm>

#include "app/sample/GearReducer.h"
#include "app/sample/GlbWriter.h"
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

}  // namespace
}  // namespace zrsheet
