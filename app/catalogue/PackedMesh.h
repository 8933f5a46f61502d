// A shape as few bytes of text: places on a grid of 65536 steps along each axis of its box.

#pragma once

#include <array>
#include <string>

#include "zrg/Shape.h"

namespace zrsheet {

/// Little-endian arrays in base64. A vertex lies at low + grid / 65535 * size.
struct PackedMesh {
    std::array<float, 3> low{};
    std::array<float, 3> size{};
    std::string positions;  // 16 bits each: x, y, z
    std::string indices;    // three a triangle; of 16 bits, or of 32 where `isWide`
    bool isWide = false;
};

/// Vertices that fall on the same step become one, triangles that vanish by that are left out.
/// O(n log n) of the vertices.
[[nodiscard]] PackedMesh Pack(const zrg::Shape& shape);

}  // namespace zrsheet
