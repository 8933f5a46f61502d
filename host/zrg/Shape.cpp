#include "zrg/Shape.h"

#include <algorithm>
#include <utility>

#include "du/Assert.h"

namespace zrg {

Shape::Shape(std::vector<float> positions, std::vector<std::uint32_t> indices, std::optional<Creases> creases)
    : m_positions(std::move(positions)), m_indices(std::move(indices)), m_creases(std::move(creases)) {
    const auto isVertex = [count = m_positions.size() / 3](std::uint32_t i) { return i < count; };
    DU_ASSERT(std::all_of(m_indices.begin(), m_indices.end(), isVertex),
              "A triangle names a vertex that its shape does not have.");
    DU_ASSERT(!m_creases || std::all_of(m_creases->begin(), m_creases->end(), isVertex),
              "A crease names a vertex that its shape does not have.");
    for (std::size_t i = 0; i + 2 < m_positions.size(); i += 3) {
        m_box.Enclose(dg::FPoint3D(m_positions[i], m_positions[i + 1], m_positions[i + 2]));
    }
}

Shape::~Shape() = default;

bool Shape::ComputeDefaultBBox(dg::FBox& box) const {
    if (m_box.IsEmpty()) return false;
    box = m_box;
    return true;
}

}  // namespace zrg
