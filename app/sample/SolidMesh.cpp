#include "app/sample/SolidMesh.h"

#include <cmath>

namespace zrsheet {

void SolidMesh::Triangle(const Point3& a, const Point3& b, const Point3& c) {
    const std::array<std::uint32_t, 3> corners{Vertex(a), Vertex(b), Vertex(c)};
    if (corners[0] == corners[1] || corners[1] == corners[2] || corners[2] == corners[0]) return;
    m_indices.insert(m_indices.end(), corners.begin(), corners.end());
}

AssemblyPart SolidMesh::ToPart(std::string name) const {
    constexpr double kMetresPerMillimetre = 0.001;
    AssemblyPart part{std::move(name), {}, m_indices};
    for (const Point3& point : m_points) {
        for (const double x : point) part.positions.push_back(static_cast<float>(x * kMetresPerMillimetre));
    }
    return part;
}

std::uint32_t SolidMesh::Vertex(const Point3& point) {
    constexpr double kPlacesPerMillimetre = 1e4;
    std::array<std::int64_t, 3> key{};
    for (std::size_t i = 0; i < 3; ++i) key[i] = std::llround(point[i] * kPlacesPerMillimetre);
    const auto [found, isNew] = m_vertices.try_emplace(key, static_cast<std::uint32_t>(m_points.size()));
    if (isNew) m_points.push_back(point);
    return found->second;
}

}  // namespace zrsheet
