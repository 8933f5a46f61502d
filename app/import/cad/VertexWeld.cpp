#include "app/import/cad/VertexWeld.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace zrsheet {

VertexWeld::VertexWeld(std::vector<gp_Pnt> places)
    : m_places(std::move(places)), m_towardsFirst(m_places.size()) {
    std::iota(m_towardsFirst.begin(), m_towardsFirst.end(), 0U);
}

void VertexWeld::Join(std::uint32_t a, std::uint32_t b, double tolerance) {
    if (Distance(a, b) > tolerance) return;
    const auto [first, second] = std::minmax({FirstOf(a), FirstOf(b)});
    m_towardsFirst[second] = first;
}

void VertexWeld::JoinRows(std::span<const std::uint32_t> a, std::span<const std::uint32_t> b,
                          double tolerance) {
    if (a.size() != b.size()) return;
    double along = 0.0;
    double against = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        along += Distance(a[i], b[i]);
        against += Distance(a[i], b[b.size() - 1 - i]);
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        Join(a[i], along <= against ? b[i] : b[b.size() - 1 - i], tolerance);
    }
}

const gp_Pnt& VertexWeld::PlaceOf(std::uint32_t node) { return m_places[FirstOf(node)]; }

double VertexWeld::Distance(std::uint32_t a, std::uint32_t b) const {
    return m_places[a].Distance(m_places[b]);
}

std::uint32_t VertexWeld::FirstOf(std::uint32_t node) {
    while (m_towardsFirst[node] != node) {
        m_towardsFirst[node] = m_towardsFirst[m_towardsFirst[node]];
        node = m_towardsFirst[node];
    }
    return node;
}

}  // namespace zrsheet
