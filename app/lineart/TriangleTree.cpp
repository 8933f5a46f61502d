#include "app/lineart/TriangleTree.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <tuple>
#include <utility>

namespace zrsheet {
namespace {

double Middle(const EdgeMesh& mesh, std::uint32_t triangle, int axis) {
    double sum = 0.0;
    for (const std::uint32_t vertex : mesh.Faces()[triangle].vertices) sum += mesh.Vertices()[vertex][axis];
    return sum;
}

double Axis(const dg::DVec3& v, int axis) { return axis == 0 ? v.x : axis == 1 ? v.y : v.z; }

}  // namespace

TriangleTree::TriangleTree(const EdgeMesh& mesh) : m_triangles(mesh.Faces().size()) {
    std::iota(m_triangles.begin(), m_triangles.end(), 0U);
    if (!m_triangles.empty()) Build(mesh, 0, static_cast<std::uint32_t>(m_triangles.size()));
}

TriangleTree::Box TriangleTree::BoxAround(const EdgeMesh& mesh, std::uint32_t first,
                                          std::uint32_t last) const {
    dg::DPoint3D low = mesh.Vertices()[mesh.Faces()[m_triangles[first]].vertices[0]];
    dg::DPoint3D high = low;
    for (std::uint32_t i = first; i < last; ++i) {
        for (const std::uint32_t vertex : mesh.Faces()[m_triangles[i]].vertices) {
            for (int axis = 0; axis < 3; ++axis) {
                low[axis] = std::min(low[axis], mesh.Vertices()[vertex][axis]);
                high[axis] = std::max(high[axis], mesh.Vertices()[vertex][axis]);
            }
        }
    }
    return {low + (high - low) * 0.5, (high - low) * 0.5};
}

// Halves along the longest side of the box.
std::uint32_t TriangleTree::Build(const EdgeMesh& mesh, std::uint32_t first, std::uint32_t last) {
    const auto number = static_cast<std::uint32_t>(m_nodes.size());
    m_nodes.push_back({BoxAround(mesh, first, last), first, last - first == 1, 0});
    if (last - first == 1) return number;
    const dg::DVec3 half = m_nodes[number].box.half;
    const int axis = half.x >= half.y && half.x >= half.z ? 0 : half.y >= half.z ? 1 : 2;
    const std::uint32_t middle = first + (last - first) / 2;
    std::nth_element(m_triangles.begin() + first, m_triangles.begin() + middle, m_triangles.begin() + last,
                     [&](std::uint32_t a, std::uint32_t b) {
                         return std::pair(Middle(mesh, a, axis), a) < std::pair(Middle(mesh, b, axis), b);
                     });
    Build(mesh, first, middle);
    const std::uint32_t second = Build(mesh, middle, last);
    m_nodes[number].second = second;
    return number;
}

void TriangleTree::FindPairs(const TriangleTree& other, const dg::DMat44& toThis,
                             const PairSink& sink) const {
    if (m_nodes.empty() || other.m_nodes.empty()) return;
    const auto overlap = [&toThis](const Box& own, const Box& foreign) {
        const dg::DVec3 apart = foreign.middle * toThis - own.middle;
        for (int axis = 0; axis < 3; ++axis) {
            const auto column = static_cast<std::size_t>(axis);
            const double reach = std::abs(toThis(0, column)) * foreign.half.x +
                                 std::abs(toThis(1, column)) * foreign.half.y +
                                 std::abs(toThis(2, column)) * foreign.half.z;
            if (std::abs(Axis(apart, axis)) > reach + Axis(own.half, axis)) return false;
        }
        return true;
    };
    std::vector<std::pair<std::uint32_t, std::uint32_t>> open{{0, 0}};
    while (!open.empty()) {
        const auto [a, b] = open.back();
        open.pop_back();
        const Node& own = m_nodes[a];
        const Node& foreign = other.m_nodes[b];
        if (!overlap(own.box, foreign.box)) continue;
        if (own.isLeaf && foreign.isLeaf) {
            if (!sink(m_triangles[own.first], other.m_triangles[foreign.first])) return;
        } else if (foreign.isLeaf || (!own.isLeaf && own.box.half.Length() > foreign.box.half.Length())) {
            open.insert(open.end(), {{own.second, b}, {a + 1, b}});
        } else {
            open.insert(open.end(), {{a, foreign.second}, {a, b + 1}});
        }
    }
}

}  // namespace zrsheet
