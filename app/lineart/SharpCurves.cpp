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
        m_lift = ContourPoint(from, to, placed.Size()).lift;
    }

    /// At two corners the smooth surface looks different ways.
    bool Turns() const { return (m_facings[0] > 0.0) != (m_facings[1] > 0.0); }
    double TurnsAt() const { return m_facings[0] / (m_facings[0] - m_facings[1]); }
    const dg::DVec3& Lift() const { return m_lift; }
    bool IsFrontAt(double share) const {
        if (!Turns()) return m_isFlatFront;
        return m_facings[0] * (1.0 - share) + m_facings[1] * share > 0.0;
    }

private:
    std::array<double, 2> m_facings{};
    bool m_isFlatFront = false;
    dg::DVec3 m_lift;
};

/// An edge of a chain, looked at along its way.
class SharpEdge {
public:
    SharpEdge(const PlacedMesh& placed, const EdgeMesh::Edge& edge, const Viewer& viewer)
        : m_placed(placed), m_edge(edge), m_first(placed, edge, edge.faces[0], viewer) {
        if (edge.faces[1] != EdgeMesh::kNone) m_second.emplace(placed, edge, edge.faces[1], viewer);
    }

    /// Shares of the way where a side turns away from the eye.
    std::vector<double> Turns() const {
        std::vector<double> turns;
        if (m_first.Turns()) turns.push_back(m_first.TurnsAt());
        if (m_second && m_second->Turns()) turns.push_back(m_second->TurnsAt());
        return turns;
    }
    dg::DVec3 Lift() const {
        if (m_first.Turns()) return m_first.Lift();
        return m_second ? m_second->Lift() : dg::DVec3();
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

/// The places on the way where a line has to have a point, 0 and 1 among them.
std::vector<double> SharesOf(const SharpEdge& edge, double bulge, bool isReversed) {
    const int pieces = std::clamp(static_cast<int>(std::ceil(std::sqrt(bulge / kExact))), 1, kMostPieces);
    std::vector<double> shares;
    for (int i = 0; i <= pieces; ++i) shares.push_back(static_cast<double>(i) / pieces);
    for (const double turn : edge.Turns()) shares.push_back(isReversed ? 1.0 - turn : turn);
    std::sort(shares.begin(), shares.end());
    return shares;
}

Curve CurveOf(const PlacedMesh& placed, const EdgeMesh::Chain& chain, const Viewer& viewer,
              double creaseAngle) {
    std::vector<dg::DPoint3D> points;
    for (const std::uint32_t vertex : chain.vertices) points.push_back(placed.Vertex(vertex));
    const CurveSmoothing smoothing(points, creaseAngle);
    Curve curve;
    curve.points.push_back({points.front(), points.front(), {}});
    for (std::size_t i = 0; i < chain.edges.size(); ++i) {
        const EdgeMesh::Edge& source = placed.Mesh().Edges()[chain.edges[i]];
        const bool isReversed = source.from != chain.vertices[i];
        const SharpEdge edge(placed, source, viewer);
        const dg::DVec3 lift = edge.Lift();
        if (lift != dg::DVec3()) curve.points.back().lift = lift;
        const double bulge = smoothing.Bulge(i);
        curve.slack = std::max(curve.slack, bulge);
        const auto shares = SharesOf(edge, bulge / viewer.PixelSize(points[i]), isReversed);
        for (std::size_t k = 1; k < shares.size(); ++k) {
            const double middle = 0.5 * (shares[k - 1] + shares[k]);
            curve.points.push_back(
                {points[i] + (points[i + 1] - points[i]) * shares[k], smoothing.At(i, shares[k]), lift});
            curve.steps.push_back(edge.StepAt(isReversed ? 1.0 - middle : middle));
        }
    }
    return curve;
}

}  // namespace

void AddSharpCurves(const PlacedMesh& placed, std::uint32_t placement, const Viewer& viewer,
                    double creaseAngle, std::vector<Curve>& curves) {
    for (const EdgeMesh::Chain& chain : placed.Mesh().SharpChains()) {
        curves.push_back(CurveOf(placed, chain, viewer, creaseAngle));
        curves.back().placement = placement;
    }
}

}  // namespace zrsheet
