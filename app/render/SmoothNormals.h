// Normals for shading that run smoothly over a curved surface though the surface is made of flat facets.

#pragma once

#include <cstdint>
#include <vector>

#include "dg/DVec3.h"
#include "dg/FVec3.h"
#include "zrg/Shape.h"

namespace zrsheet {

/// A normal for each corner of each triangle: the mean of the facets around the corner that turn less than
/// the crease angle against the triangle, weighted by their areas so that a fillet does not bend the flat
/// face beside it. Vertices in one place count as one. Never changes once made, so any thread may read it.
class SmoothNormals {
public:
    /// None yet.
    SmoothNormals() = default;
    /// Cost: linear in the triangles. `creaseAngle` in degrees.
    SmoothNormals(const zrg::Shape& shape, double creaseAngle);

    /// In the shape's coordinates, length 1 or 0. `u` and `v` are the shares of the second and third corner.
    dg::DVec3 At(std::uint32_t triangle, float u, float v) const;

private:
    std::vector<dg::FVec3> m_corners;  // three a triangle
};

}  // namespace zrsheet
