#include "app/lineart/Crossings.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <unordered_map>
#include <utility>

#include "app/lineart/ChainBuilder.h"

namespace zrsheet {
namespace {

// Sine of the flattest angle at which surfaces cross.
constexpr double kFlattest = 0.3;
// Share of the smaller body's size: what stands out by less only touches.
constexpr double kTouch = 2e-5;
constexpr std::size_t kMostTests = 4'000'000;  // of triangles, a pair of bodies

/// Where the edge of one triangle goes through the plane of the other.
struct Pierced {
    dg::DPoint3D point;
    std::uint64_t node = 0;
};

struct Triangle {
    std::array<dg::DPoint3D, 3> corners;
    dg::DVec3 normal;
    std::array<std::uint32_t, 3> edges{};
};

Triangle TriangleOf(const PlacedMesh& placed, std::uint32_t face) {
    Triangle triangle;
    const EdgeMesh::Face& source = placed.Mesh().Faces()[face];
    for (std::size_t k = 0; k < 3; ++k) triangle.corners[k] = placed.Vertex(source.vertices[k]);
    triangle.edges = source.edges;
    const auto& [a, b, c] = triangle.corners;
    triangle.normal = (b - a).Cross(c - a).Normalized();
    return triangle;
}

class CrossingFinder {
public:
    CrossingFinder(const PlacedMesh& a, const PlacedMesh& b)
        : m_a(a), m_b(b), m_touch(kTouch * std::min(a.Size(), b.Size())) {}

    bool Meet(std::uint32_t faceA, std::uint32_t faceB) {
        const Triangle a = TriangleOf(m_a, faceA);
        const Triangle b = TriangleOf(m_b, faceB);
        const dg::DVec3 line = a.normal.Cross(b.normal);
        std::array<Pierced, 2> cutA;
        std::array<Pierced, 2> cutB;
        // The low bit tells whose edge it is.
        const bool isMet = line.Length() >= kFlattest && Pierce(a, b, 2ULL * faceB, cutA) &&
                           Pierce(b, a, 2ULL * faceA + 1, cutB);
        if (isMet) Join(line.Normalized(), cutA, cutB);
        return ++m_tests < kMostTests;
    }

    std::vector<Curve> Curves() const {
        std::vector<Curve> curves;
        for (const LinkChain& chain : BuildChains(m_links)) {
            Curve& curve = curves.emplace_back();
            curve.isCrossing = true;
            for (const std::uint64_t node : chain.nodes) {
                const dg::DPoint3D& point = m_points[node];
                curve.points.push_back({point, point, {}});
            }
            curve.steps.resize(chain.links.size());
        }
        return curves;
    }

private:
    // Corners in the plane count as above it, on both sides alike, so that neighbours agree.
    bool Pierce(const Triangle& triangle, const Triangle& other, std::uint64_t key,
                std::array<Pierced, 2>& cut) const {
        std::array<double, 3> heights{};
        for (std::size_t k = 0; k < 3; ++k) {
            heights[k] = (triangle.corners[k] - other.corners[0]).Dot(other.normal);
            if (std::abs(heights[k]) < m_touch) heights[k] = 0.0;
        }
        std::size_t count = 0;
        for (std::size_t k = 0; k < 3; ++k) {
            const std::size_t next = (k + 1) % 3;
            if ((heights[k] < 0.0) == (heights[next] < 0.0)) continue;
            const double share = heights[k] / (heights[k] - heights[next]);
            cut[count++] = {triangle.corners[k] + (triangle.corners[next] - triangle.corners[k]) * share,
                            (static_cast<std::uint64_t>(triangle.edges[k]) << 32U) ^ key};
        }
        return count == 2;
    }

    // What both triangles have of the line.
    void Join(const dg::DVec3& line, std::array<Pierced, 2> a, std::array<Pierced, 2> b) {
        const auto along = [&](const Pierced& pierced) { return (pierced.point - dg::DPoint3D()).Dot(line); };
        for (auto* cut : {&a, &b}) {
            if (along((*cut)[0]) > along((*cut)[1])) std::swap((*cut)[0], (*cut)[1]);
        }
        const Pierced& from = along(a[0]) >= along(b[0]) ? a[0] : b[0];
        const Pierced& to = along(a[1]) <= along(b[1]) ? a[1] : b[1];
        if (along(to) <= along(from)) return;
        m_links.push_back({Number(from), Number(to)});
    }

    std::uint64_t Number(const Pierced& pierced) {
        const auto [place, isNew] = m_numbers.try_emplace(pierced.node, m_points.size());
        if (isNew) m_points.push_back(pierced.point);
        return place->second;
    }

    const PlacedMesh& m_a;
    const PlacedMesh& m_b;
    double m_touch;
    std::size_t m_tests = 0;
    std::vector<ChainLink> m_links;
    std::vector<dg::DPoint3D> m_points;
    std::unordered_map<std::uint64_t, std::size_t> m_numbers;
};

bool Overlap(const PlacedMesh& a, const PlacedMesh& b) {
    for (int axis = 0; axis < 3; ++axis) {
        if (a.Low()[axis] > b.High()[axis] || b.Low()[axis] > a.High()[axis]) return false;
    }
    return true;
}

}  // namespace

// Sweeps along x.
std::vector<std::pair<std::uint32_t, std::uint32_t>> OverlappingPairs(std::span<const PlacedMesh> meshes) {
    std::vector<std::uint32_t> order(meshes.size());
    std::iota(order.begin(), order.end(), 0U);
    std::sort(order.begin(), order.end(), [meshes](std::uint32_t a, std::uint32_t b) {
        return std::pair(meshes[a].Low().x, a) < std::pair(meshes[b].Low().x, b);
    });
    std::vector<std::pair<std::uint32_t, std::uint32_t>> pairs;
    for (std::size_t i = 0; i < order.size(); ++i) {
        const PlacedMesh& mesh = meshes[order[i]];
        for (std::size_t k = i + 1; k < order.size() && meshes[order[k]].Low().x <= mesh.High().x; ++k) {
            if (Overlap(mesh, meshes[order[k]])) pairs.push_back(std::minmax(order[i], order[k]));
        }
    }
    std::sort(pairs.begin(), pairs.end());
    return pairs;
}

std::vector<Curve> CrossingCurves(const PlacedMesh& a, const TriangleTree& treeA, const PlacedMesh& b,
                                  const TriangleTree& treeB) {
    CrossingFinder finder(a, b);
    treeA.FindPairs(
        treeB, b.ToWorld() * a.ToWorld().Invert(),
        [&finder](std::uint32_t faceA, std::uint32_t faceB) { return finder.Meet(faceA, faceB); });
    return finder.Curves();
}

}  // namespace zrsheet
