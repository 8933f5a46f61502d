#include "app/lineart/SharpCurves.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "app/lineart/CurveSmoothing.h"

namespace zrsheet {
namespace {

// In pixels: how far a line may be off the curve that it stands for.
constexpr double kExact = 0.03;
constexpr int kMostPieces = 12;

/// To the side of an edge where the face is not.
dg::DVec3 AwayFrom(const PlacedMesh& placed, const EdgeMesh::Edge& edge, std::uint32_t face) {
    const dg::DPoint3D& from = placed.Vertex(edge.from);
    const dg::DVec3 along = (placed.Vertex(edge.to) - from).Normalized();
    dg::DVec3 inside;
    for (const std::uint32_t vertex : placed.Mesh().Faces()[face].vertices) {
        if (vertex != edge.from && vertex != edge.to) inside = placed.Vertex(vertex) - from;
    }
    return (along * along.Dot(inside) - inside).Normalized();
}

CurveStep StepOf(const PlacedMesh& placed, const EdgeMesh::Edge& edge, const Viewer& viewer) {
    const auto [first, second] = edge.faces;
    const bool isSolid = placed.Mesh().IsSolid();
    const bool isFrontFirst = placed.IsFront(first, viewer);
    if (second == EdgeMesh::kNone) return {true, false, AwayFrom(placed, edge, first)};
    if (edge.isMany) return {};
    const bool isFrontSecond = placed.IsFront(second, viewer) != edge.isTwisted;
    if (isFrontFirst != isFrontSecond)
        return {true, false, AwayFrom(placed, edge, isFrontFirst ? first : second)};
    return {false, isSolid && !isFrontFirst, {}};
}

}  // namespace

void AddSharpCurves(const PlacedMesh& placed, std::uint32_t placement, const Viewer& viewer,
                    double creaseAngle, std::vector<Curve>& curves) {
    for (const EdgeMesh::Chain& chain : placed.Mesh().SharpChains()) {
        Curve curve;
        curve.placement = placement;
        std::vector<dg::DPoint3D> points;
        for (const std::uint32_t vertex : chain.vertices) points.push_back(placed.Vertex(vertex));
        const CurveSmoothing smoothing(points, creaseAngle);
        curve.points.push_back({points.front(), points.front(), {}});
        for (std::size_t i = 0; i < chain.edges.size(); ++i) {
            const CurveStep step = StepOf(placed, placed.Mesh().Edges()[chain.edges[i]], viewer);
            const double bulge = smoothing.Bulge(i) / viewer.PixelSize(points[i]);
            const int pieces =
                std::clamp(static_cast<int>(std::ceil(std::sqrt(bulge / kExact))), 1, kMostPieces);
            for (int k = 1; k <= pieces; ++k) {
                const double share = static_cast<double>(k) / pieces;
                curve.points.push_back(
                    {points[i] + (points[i + 1] - points[i]) * share, smoothing.At(i, share), {}});
                curve.steps.push_back(step);
            }
        }
        curves.push_back(std::move(curve));
    }
}

}  // namespace zrsheet
