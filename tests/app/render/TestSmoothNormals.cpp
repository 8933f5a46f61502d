#include "app/render/SmoothNormals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "tests/app/render/ModelStage.h"

namespace zrsheet::test {
namespace {

double DegreesBetween(const dg::DVec3& a, const dg::DVec3& b) {
    return std::acos(std::min(1.0, a.Normalized().Dot(b.Normalized()))) * 180.0 / std::numbers::pi;
}

dg::DVec3 CornerOf(const zrg::Shape& shape, std::uint32_t corner) {
    const std::size_t at = 3 * static_cast<std::size_t>(shape.GetIndices()[corner]);
    const auto p = shape.GetPositions();
    return {static_cast<double>(p[at]), static_cast<double>(p[at + 1]), static_cast<double>(p[at + 2])};
}

// The faces share no vertices; only their places join them.
TEST(SmoothNormals, PointAwayFromTheAxisOfACylinder) {
    const ShapePtr mantle = Mantle(5, 10, 24);
    const SmoothNormals normals(*mantle, 30.0);
    const float cornerU[] = {0, 1, 0};
    const float cornerV[] = {0, 0, 1};
    for (std::uint32_t i = 0; i < 3 * mantle->GetTriangleCount(); ++i) {
        const dg::DVec3 corner = CornerOf(*mantle, i);
        const dg::DVec3 normal = normals.At(i / 3, cornerU[i % 3], cornerV[i % 3]);
        // Two triangles of one facet and one of the other meet there, so the mean leans a little.
        EXPECT_LT(DegreesBetween(normal, {corner.x, corner.y, 0}), 4.0) << i;
    }
}

TEST(SmoothNormals, StayThoseOfTheFacesAtSharpEdges) {
    const ShapePtr box = Box({0, 0, 0}, {1, 2, 3});
    const SmoothNormals normals(*box, 30.0);
    for (std::uint32_t i = 0; i < box->GetTriangleCount(); ++i) {
        const dg::DVec3 face = (CornerOf(*box, 3 * i + 1) - CornerOf(*box, 3 * i))
                                   .Cross(CornerOf(*box, 3 * i + 2) - CornerOf(*box, 3 * i));
        EXPECT_LT(DegreesBetween(normals.At(i, 0.2F, 0.3F), face), 0.01) << i;
    }
}

// A narrow chamfer must not make the large face beside it look bulged.
TEST(SmoothNormals, AreThoseOfTheLargerFaceWhereASmallOneJoinsIt) {
    const ShapePtr bend(
        new zrg::Shape({0, 0, 0, 100, 0, 0, 100, 100, 0, 0, 100, 0, 101, 0, -0.4F, 101, 100, -0.4F},
                       {0, 1, 2, 0, 2, 3, 1, 4, 5, 1, 5, 2}));
    const SmoothNormals normals(*bend, 30.0);
    EXPECT_LT(DegreesBetween(normals.At(0, 1, 0), {0, 0, 1}), 1.0);
    EXPECT_LT(DegreesBetween(normals.At(2, 0, 0), {0, 0, 1}), 1.0);
}

}  // namespace
}  // namespace zrsheet::test
