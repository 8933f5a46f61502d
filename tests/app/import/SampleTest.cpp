#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <map>

#include "app/import/AssemblyStream.h"
#include "app/sample/GearReducer.h"
#include "app/sample/GlbWriter.h"
#include "tests/app/import/ImportFixture.h"

namespace zrsheet {
namespace {

using Vector = std::array<double, 3>;

Vector Corner(const AssemblyPart& part, std::size_t index) {
    const float* const point = &part.positions[std::size_t{part.indices[index]} * 3];
    return {point[0], point[1], point[2]};
}

double Dot(const Vector& a, const Vector& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

Vector Cross(const Vector& a, const Vector& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

Vector UnitNormal(const AssemblyPart& part, std::size_t triangle) {
    const Vector a = Corner(part, triangle * 3);
    const Vector b = Corner(part, triangle * 3 + 1);
    const Vector c = Corner(part, triangle * 3 + 2);
    Vector normal = Cross({b[0] - a[0], b[1] - a[1], b[2] - a[2]}, {c[0] - a[0], c[1] - a[1], c[2] - a[2]});
    const double length = std::sqrt(Dot(normal, normal));
    for (double& x : normal) x /= length;
    return normal;
}

double Volume(const AssemblyPart& part) {
    double volume = 0;
    for (std::size_t i = 0; i < part.indices.size(); i += 3) {
        volume += Dot(Corner(part, i), Cross(Corner(part, i + 1), Corner(part, i + 2))) / 6;
    }
    return volume;
}

// Every edge twice, once in each direction, and no surface folded back onto itself.
void ExpectClosed(const AssemblyPart& part) {
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::size_t> triangleOf;
    for (std::size_t i = 0; i < part.indices.size(); ++i) {
        const std::size_t next = i % 3 == 2 ? i - 2 : i + 1;
        const bool isNew = triangleOf.try_emplace({part.indices[i], part.indices[next]}, i / 3).second;
        EXPECT_TRUE(isNew) << part.name;
    }
    std::size_t open = 0;
    std::size_t folded = 0;
    for (const auto& [edge, triangle] : triangleOf) {
        const auto other = triangleOf.find({edge.second, edge.first});
        if (other == triangleOf.end()) {
            ++open;
        } else if (Dot(UnitNormal(part, triangle), UnitNormal(part, other->second)) < -0.999) {
            ++folded;
        }
    }
    EXPECT_EQ(open, 0U) << part.name;
    EXPECT_EQ(folded, 0U) << part.name;
}

class Sample : public ImportFixture {};

TEST_F(Sample, HasClosedPartsThatFaceOutwards) {
    for (const AssemblyPart& part : MakeGearReducer().parts) {
        ExpectClosed(part);
        EXPECT_GT(Volume(part), 1e-8) << part.name;  // cubic metres
    }
}

// A steel disc of the gear's pitch circle, less bore, web and holes, weighs about what the gear does.
TEST_F(Sample, HasGearsOfTheirNominalSize) {
    for (const AssemblyPart& part : MakeGearReducer().parts) {
        if (part.name != "Pinion z25 m2.5") continue;
        const double disc = 3.14159 * (0.03125 * 0.03125 - 0.016 * 0.016) * 0.036;
        EXPECT_NEAR(Volume(part) / disc, 1.0, 0.06);
        return;
    }
    FAIL() << "no pinion";
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
