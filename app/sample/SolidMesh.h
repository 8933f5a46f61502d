// The surface of a solid in millimetres, while it is being made.

#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "app/import/Assembly.h"

namespace zrsheet {

using Point2 = std::array<double, 2>;
using Point3 = std::array<double, 3>;

/// Triangles that share vertices by place: points nearer than a tenth of a micrometre are one. One thread.
class SolidMesh {
public:
    /// Adds a triangle, counter-clockwise seen from outside; one that has no area because points fell
    /// together is dropped.
    void Triangle(const Point3& a, const Point3& b, const Point3& c);

    /// The part, in metres.
    [[nodiscard]] AssemblyPart ToPart(std::string name) const;

private:
    std::uint32_t Vertex(const Point3& point);

    std::vector<Point3> m_points;
    std::vector<std::uint32_t> m_indices;
    std::map<std::array<std::int64_t, 3>, std::uint32_t> m_vertices;
};

}  // namespace zrsheet
