// Triangles as a file has them: any number of vertices may lie at one place, and some may be unused.

#pragma once

#include <cstdint>
#include <vector>

namespace zrsheet {

struct TriangleList {
    std::vector<float> positions;        // x, y, z of each vertex
    std::vector<std::uint32_t> indices;  // three to a triangle, each below the number of vertices
};

}  // namespace zrsheet
