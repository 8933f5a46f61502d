// Which edges of a mesh are lines, where nothing but the angles between triangles tells it.

#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "dg/DPoint3D.h"

namespace zrsheet {

struct TurningEdge {
    std::uint32_t from = 0;  // vertices
    std::uint32_t to = 0;
    double turn = 0.0;  // radians between the faces; pi where there are not two
};

/// For each edge: is it sharp? Those are that turn more than `creaseAngle` (degrees), but a line that ends in
/// the middle of a surface goes on where the surface turns little less and another line is met; and lines
/// that turn hardly more and end there nevertheless are left out, as chance has them on the rounds of coarse
/// meshes. O(n log n).
[[nodiscard]] std::vector<bool> FindSharpEdges(std::span<const TurningEdge> edges,
                                               std::span<const dg::DPoint3D> vertices, double creaseAngle);

}  // namespace zrsheet
