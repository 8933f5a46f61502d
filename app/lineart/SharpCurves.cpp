#include "app/lineart/SharpCurves.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "app/lineart/CurveSmoothing.h"
#include "app/lineart/SmoothContours.h"

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

/// One face beside an edge, by the smooth surface that it is part of: it may turn away on the way.
class EdgeSide {
public:
    EdgeSide(const PlacedMesh& placed, const EdgeMesh::Edge& edge, std::uint32_t face, const Viewer& viewer) {
        const auto& vertices = placed.Mesh().Faces()[face].vertices;
        const auto corner = [&](std::uint32_t vertex) {
            const auto place = std::find(vertices.begin(), vertices.end(), vertex) - vertices.begin();
            return placed.CornerOf(face, static_cast<std::size_t>(place), viewer);
        };
        const PlacedMesh::Corner from = corner(edge.from);
        const PlacedMesh::Corner to = corner(edge.to);
        m_facings = {from.facing, to.facing};
        m_isFlatFront = placed.IsFront(face, viewer);
        if (!Turns()) return;
        m_contour = ContourPoint(from, to, placed.Size());
    }

    /// At two corners the smooth surface looks different ways.
    bool Turns() const { return (m_facings[0] > 0.0) != (m_facings[1] > 0.0); }
    double TurnsAt() const { return m_facings[0] / (m_facings[0] - m_facings[1]); }
    const CurvePoint& Contour() const { return m_contour; }
    bool IsFrontAt(double share) const {
        if (!Turns()) return m_isFlatFront;
        return m_facings[0] * (1.0 - share) + m_facings[1] * share > 0.0;
    }

private:
    std::array<double, 2> m_facings{};
    bool m_isFlatFront = false;
    CurvePoint m_contour;  // where it turns
};

/// An edge of a chain, looked at along its way.
class SharpEdge {
public:
    SharpEdge(const PlacedMesh& placed, const EdgeMesh::Edge& edge, const Viewer& viewer)
        : m_placed(placed), m_edge(edge), m_first(placed, edge, edge.faces[0], viewer) {
        if (edge.faces[1] != EdgeMesh::kNone) m_second.emplace(placed, edge, edge.faces[1], viewer);
    }

    /// The sides that turn away from the eye on the way.
    std::vector<const EdgeSide*> TurningSides() const {
        std::vector<const EdgeSide*> turning;
        if (m_first.Turns()) turning.push_back(&m_first);
        if (m_second && m_second->Turns()) turning.push_back(&*m_second);
        return turning;
    }
    CurveStep StepAt(double share) const {
        const auto [first, second] = m_edge.faces;
        if (!m_second) return {true, false, AwayFrom(m_placed, m_edge, first)};
        if (m_edge.isMany) return {};
        const bool isFirst = m_first.IsFrontAt(share);
        const bool isSecond = m_second->IsFrontAt(share) != m_edge.isTwisted;
        if (isFirst != isSecond) return {true, false, AwayFrom(m_placed, m_edge, isFirst ? first : second)};
        return {false, m_placed.Mesh().IsSolid() && !isFirst, {}};
    }

private:
    const PlacedMesh& m_placed;
    const EdgeMesh::Edge& m_edge;
    EdgeSide m_first;
    std::optional<EdgeSide> m_second;
};

/// A place on the way from one vertex to the next where the line has a point.
struct Stop {
    double share = 0.0;
    CurvePoint point;
};

/// Evenly along the curve, and where a contour of the surface ends at the edge: there both have one point.
std::vector<Stop> StopsOf(const SharpEdge& edge, const CurveSmoothing& smoothing, std::size_t step,
                          double pixelSize, bool isReversed) {
    const double bulge = smoothing.Bulge(step) / pixelSize;
    const int pieces = std::clamp(static_cast<int>(std::ceil(std::sqrt(bulge / kExact))), 1, kMostPieces);
    const auto sides = edge.TurningSides();
    const dg::DVec3 lift = sides.empty() ? dg::DVec3() : sides.front()->Contour().lift;
    std::vector<Stop> stops;
    for (int i = 0; i <= pieces; ++i) {
        const double share = static_cast<double>(i) / pieces;
        stops.push_back({share, {smoothing.Straight(step, share), smoothing.At(step, share), lift}});
    }
    for (const EdgeSide* side : sides)
        stops.push_back({isReversed ? 1.0 - side->TurnsAt() : side->TurnsAt(), side->Contour()});
    std::stable_sort(stops.begin(), stops.end(),
                     [](const Stop& a, const Stop& b) { return a.share < b.share; });
    return stops;
}

Curve CurveOf(const PlacedMesh& placed, const EdgeMesh::Chain& chain, const Viewer& viewer,
              double creaseAngle) {
    std::vector<dg::DPoint3D> points;
    for (const std::uint32_t vertex : chain.vertices) points.push_back(placed.Vertex(vertex));
    const CurveSmoothing smoothing(points, creaseAngle);
    Curve curve;
    for (std::size_t i = 0; i < chain.edges.size(); ++i) {
        const EdgeMesh::Edge& source = placed.Mesh().Edges()[chain.edges[i]];
        const bool isReversed = source.from != chain.vertices[i];
        const SharpEdge edge(placed, source, viewer);
        curve.slack = std::max(curve.slack, smoothing.Bulge(i));
        const auto stops = StopsOf(edge, smoothing, i, viewer.PixelSize(points[i]), isReversed);
        if (curve.points.empty()) curve.points.push_back(stops.front().point);
        if (stops.front().point.lift != dg::DVec3()) curve.points.back().lift = stops.front().point.lift;
        for (std::size_t k = 1; k < stops.size(); ++k) {
            const double middle = 0.5 * (stops[k - 1].share + stops[k].share);
            curve.points.push_back(stops[k].point);
            curve.steps.push_back(edge.StepAt(isReversed ? 1.0 - middle : middle));
        }
    }
    return curve;
}

}  // namespace

void AddSharpCurves(const PlacedMesh& placed, const Viewer& viewer, double creaseAngle,
                    std::vector<Curve>& curves) {
    for (const EdgeMesh::Chain& chain : placed.Mesh().SharpChains()) {
        curves.push_back(CurveOf(placed, chain, viewer, creaseAngle));
    }
}

}  // namespace zrsheet
