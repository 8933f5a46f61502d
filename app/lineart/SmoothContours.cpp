#include "app/lineart/SmoothContours.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <utility>

#include "app/lineart/ChainBuilder.h"

namespace zrsheet {
namespace {

// Share of the shape's size by which contours are lifted at least.
constexpr double kLeastLift = 2e-5;

using Corner = PlacedMesh::Corner;

class ContourFinder {
public:
    ContourFinder(const PlacedMesh& placed, const Viewer& viewer) : m_placed(placed), m_viewer(viewer) {}

    void LookAt(std::uint32_t face) {
        std::array<Corner, 3> corners;
        for (std::size_t k = 0; k < 3; ++k) corners[k] = m_placed.CornerOf(face, k, m_viewer);
        const auto isFront = [&corners](std::size_t k) { return corners[k].facing > 0.0; };
        if (isFront(0) == isFront(1) && isFront(1) == isFront(2)) return;
        if (m_placed.Mesh().IsSolid() && !IsConvex(corners)) return;
        std::array<std::uint64_t, 2> nodes{};
        std::size_t count = 0;
        for (std::size_t k = 0; k < 3; ++k) {
            const std::size_t next = (k + 1) % 3;
            if (isFront(k) == isFront(next)) continue;
            const std::uint64_t node = NodeOf(face, k);
            m_points.try_emplace(node, ContourPoint(corners[k], corners[next], m_placed.Size()));
            nodes[count++] = node;
        }
        m_links.push_back({nodes[0], nodes[1]});
    }

    void AddCurves(std::vector<Curve>& curves) const {
        for (const LinkChain& chain : BuildChains(m_links)) {
            Curve curve;
            for (const std::uint64_t node : chain.nodes) curve.points.push_back(m_points.at(node));
            for (std::size_t i = 0; i + 1 < curve.points.size(); ++i) {
                const dg::DVec3 away =
                    curve.points[i].lift.Normalized() + curve.points[i + 1].lift.Normalized();
                curve.steps.push_back({true, false, away.Normalized()});
            }
            curves.push_back(std::move(curve));
        }
    }

private:
    /// Both faces of a smooth edge meet in one node; of a sharp one each has its own.
    std::uint64_t NodeOf(std::uint32_t face, std::size_t k) const {
        const std::uint32_t number = m_placed.Mesh().Faces()[face].edges[k];
        const EdgeMesh::Edge& edge = m_placed.Mesh().Edges()[number];
        const bool isSecond = edge.isSharp && edge.faces[1] == face;
        return 2ULL * number + (isSecond ? 1ULL : 0ULL);
    }

    // Along the look towards the eye the surface of a body must turn to the eye; where it turns away instead
    // the contour lies in a hollow, behind the body itself.
    bool IsConvex(const std::array<Corner, 3>& corners) const {
        const dg::DVec3 u = corners[1].place - corners[0].place;
        const dg::DVec3 v = corners[2].place - corners[0].place;
        const dg::DVec3 look = m_viewer.TowardsEye(corners[0].place);
        const double uu = u.Dot(u);
        const double uv = u.Dot(v);
        const double vv = v.Dot(v);
        const double lu = look.Dot(u);
        const double lv = look.Dot(v);
        // Without the determinant, which is positive.
        return (lu * vv - lv * uv) * (corners[1].facing - corners[0].facing) +
                   (lv * uu - lu * uv) * (corners[2].facing - corners[0].facing) >
               0.0;
    }

    const PlacedMesh& m_placed;
    const Viewer& m_viewer;
    std::vector<ChainLink> m_links;
    std::unordered_map<std::uint64_t, CurvePoint> m_points;
};

}  // namespace

// The curved surface over an edge bulges by what its ends' tangent planes tell.
CurvePoint ContourPoint(const PlacedMesh::Corner& a, const PlacedMesh::Corner& b, double size) {
    const double share = a.facing / (a.facing - b.facing);
    const dg::DVec3 edge = b.place - a.place;
    const dg::DVec3 rise = b.normal * edge.Dot(b.normal) - a.normal * edge.Dot(a.normal);
    const dg::DVec3 normal = (a.normal * (1.0 - share) + b.normal * share).Normalized();
    const dg::DPoint3D place = a.place + edge * share;
    const double lift = 0.25 * rise.Length() + kLeastLift * size;
    return {place, place + rise * (0.5 * share * (1.0 - share)), normal * lift};
}

void AddSmoothContours(const PlacedMesh& placed, const Viewer& viewer, std::vector<Curve>& curves) {
    if (placed.Mesh().IsFaceted()) return;
    ContourFinder finder(placed, viewer);
    for (std::uint32_t face = 0; face < placed.Mesh().Faces().size(); ++face) finder.LookAt(face);
    finder.AddCurves(curves);
}

}  // namespace zrsheet
