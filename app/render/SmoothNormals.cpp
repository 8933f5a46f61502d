#include "app/render/SmoothNormals.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <numeric>
#include <span>

namespace zrsheet {
namespace {

// A corner where more facets meet is the tip of a cone or the hub of a disc: its facets speak for themselves.
constexpr std::size_t kMostNeighbours = 128;

dg::DVec3 Wide(const dg::FVec3& v) {
    return {static_cast<double>(v.x), static_cast<double>(v.y), static_cast<double>(v.z)};
}

dg::FVec3 Narrow(const dg::DVec3& v) {
    return {static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z)};
}

/// The corners of a shape's triangles as points.
class Corners {
public:
    explicit Corners(const zrg::Shape& shape)
        : m_positions(shape.GetPositions()), m_indices(shape.GetIndices()) {}

    std::array<float, 3> PositionOf(std::uint32_t corner) const {
        const std::size_t at = 3 * static_cast<std::size_t>(m_indices[corner]);
        return {m_positions[at], m_positions[at + 1], m_positions[at + 2]};
    }
    dg::DVec3 PointOf(std::uint32_t corner) const {
        const auto p = PositionOf(corner);
        return {static_cast<double>(p[0]), static_cast<double>(p[1]), static_cast<double>(p[2])};
    }
    /// All of them, those in one place next to each other.
    std::vector<std::uint32_t> SortedByPlace() const {
        std::vector<std::uint32_t> sorted(m_indices.size());
        std::iota(sorted.begin(), sorted.end(), 0U);
        std::sort(sorted.begin(), sorted.end(), [this](std::uint32_t a, std::uint32_t b) {
            const auto placeA = PositionOf(a);
            const auto placeB = PositionOf(b);
            return placeA != placeB ? placeA < placeB : a < b;
        });
        return sorted;
    }

private:
    std::span<const float> m_positions;
    std::span<const std::uint32_t> m_indices;
};

/// The normals of the triangles, as long as twice their areas.
std::vector<dg::DVec3> FacetNormals(const Corners& corners, std::size_t triangles) {
    std::vector<dg::DVec3> normals(triangles);
    for (std::uint32_t i = 0; i < triangles; ++i) {
        const dg::DVec3 origin = corners.PointOf(3 * i);
        normals[i] = (corners.PointOf(3 * i + 1) - origin).Cross(corners.PointOf(3 * i + 2) - origin);
    }
    return normals;
}

/// The mean around one place as the facet of `corner` sees it.
dg::DVec3 MeanNormal(std::span<const std::uint32_t> place, std::span<const dg::DVec3> facets,
                     std::uint32_t corner, double creaseCosine) {
    const dg::DVec3 own = facets[corner / 3].Normalized();
    if (place.size() > kMostNeighbours) return own;
    dg::DVec3 sum;
    for (const std::uint32_t other : place) {
        const dg::DVec3& facet = facets[other / 3];
        if (own.Dot(facet) >= creaseCosine * facet.Length()) sum = sum + facet;
    }
    return sum.Normalized();
}

}  // namespace

SmoothNormals::SmoothNormals(const zrg::Shape& shape, double creaseAngle)
    : m_corners(shape.GetIndices().size()) {
    const double creaseCosine = std::cos(creaseAngle * std::numbers::pi / 180.0);
    const Corners corners(shape);
    const std::vector<dg::DVec3> facets = FacetNormals(corners, shape.GetTriangleCount());
    const std::vector<std::uint32_t> sorted = corners.SortedByPlace();
    for (std::size_t first = 0; first < sorted.size();) {
        std::size_t last = first + 1;
        while (last < sorted.size() && corners.PositionOf(sorted[last]) == corners.PositionOf(sorted[first]))
            ++last;
        const auto place = std::span(sorted).subspan(first, last - first);
        for (const std::uint32_t corner : place) {
            m_corners[corner] = Narrow(MeanNormal(place, facets, corner, creaseCosine));
        }
        first = last;
    }
}

dg::DVec3 SmoothNormals::At(std::uint32_t triangle, float u, float v) const {
    const dg::FVec3* corner = &m_corners[3 * static_cast<std::size_t>(triangle)];
    const auto shareU = static_cast<double>(u);
    const auto shareV = static_cast<double>(v);
    return (Wide(corner[0]) * (1.0 - shareU - shareV) + Wide(corner[1]) * shareU + Wide(corner[2]) * shareV)
        .Normalized();
}

}  // namespace zrsheet
