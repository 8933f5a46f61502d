#include "app/import/reading/PartBuilder.h"

#include <bit>
#include <utility>

namespace zrsheet {

std::size_t PartBuilder::PlaceHash::operator()(const Place& place) const {
    std::uint64_t hash = 0;
    for (const float coordinate : place) {
        hash = (hash ^ std::bit_cast<std::uint32_t>(coordinate)) * 0x9E37'79B9'7F4A'7C15;
        hash ^= hash >> 32;
    }
    return hash;
}

std::vector<std::uint32_t> PartBuilder::Add(const TriangleList& piece) {
    std::vector<std::uint32_t> vertices(piece.positions.size() / 3, kNoVertex);
    const auto vertexOf = [&](std::uint32_t index) {
        if (vertices[index] == kNoVertex)
            vertices[index] = VertexAt(&piece.positions[std::size_t{index} * 3]);
        return vertices[index];
    };
    for (std::size_t i = 0; i + 2 < piece.indices.size(); i += 3) {
        const std::uint32_t a = vertexOf(piece.indices[i]);
        const std::uint32_t b = vertexOf(piece.indices[i + 1]);
        const std::uint32_t c = vertexOf(piece.indices[i + 2]);
        if (a != b && b != c && c != a) m_part.indices.insert(m_part.indices.end(), {a, b, c});
    }
    return vertices;
}

AssemblyPart PartBuilder::Take() { return std::move(m_part); }

std::uint32_t PartBuilder::VertexAt(const float* place) {
    constexpr float kPlusZero = 0.0F;  // added, it turns -0 into 0, which is the same place
    const Place key{place[0] + kPlusZero, place[1] + kPlusZero, place[2] + kPlusZero};
    const auto next = static_cast<std::uint32_t>(m_part.positions.size() / 3);
    const auto [found, isNew] = m_vertices.try_emplace(key, next);
    if (isNew) m_part.positions.insert(m_part.positions.end(), key.begin(), key.end());
    return found->second;
}

}  // namespace zrsheet
