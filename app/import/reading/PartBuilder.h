// Makes one clean part out of the pieces in which a file holds a body.

#pragma once

#include <array>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "app/import/Assembly.h"
#include "app/import/reading/TriangleList.h"

namespace zrsheet {

/// Collects triangles; vertices at exactly one place become one, triangles without area for that reason are
/// left out. The result depends on the pieces and their order only. One thread.
class PartBuilder {
public:
    /// The part's vertex for each of the list's, kNoVertex for those that no triangle uses.
    /// Requires: the list's indices lie below its number of vertices.
    std::vector<std::uint32_t> Add(const TriangleList& piece);

    static constexpr std::uint32_t kNoVertex = 0xFFFF'FFFF;

    /// The part, without a name; without triangles if there were none. Ends the builder's use.
    [[nodiscard]] AssemblyPart Take();

private:
    using Place = std::array<float, 3>;
    struct PlaceHash {
        std::size_t operator()(const Place& place) const;
    };
    std::uint32_t VertexAt(const float* place);

    AssemblyPart m_part;
    std::unordered_map<Place, std::uint32_t, PlaceHash> m_vertices;
};

}  // namespace zrsheet
