// A point in double precision.

#pragma once

#include "dg/DMat44.h"
#include "dg/DVec3.h"

namespace dg {

class Location;

struct DPoint3D {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    constexpr DPoint3D() = default;
    constexpr DPoint3D(double px, double py, double pz) : x(px), y(py), z(pz) {}

    /// The coordinate on axis 0, 1 or 2.
    double operator[](int axis) const { return axis == 0 ? x : axis == 1 ? y : z; }
    double& operator[](int axis) { return axis == 0 ? x : axis == 1 ? y : z; }

    /// With the division by w that a projection asks for.
    DPoint3D& operator*=(const DMat44& m) {
        const double w = x * m(0, 3) + y * m(1, 3) + z * m(2, 3) + m(3, 3);
        const DPoint3D moved(x * m(0, 0) + y * m(1, 0) + z * m(2, 0) + m(3, 0),
                             x * m(0, 1) + y * m(1, 1) + z * m(2, 1) + m(3, 1),
                             x * m(0, 2) + y * m(1, 2) + z * m(2, 2) + m(3, 2));
        // Exact for the affine matrices, which are by far the most.
        return *this = w == 1.0 || w == 0.0 ? moved : DPoint3D(moved.x / w, moved.y / w, moved.z / w);
    }
    DPoint3D& operator*=(const Location& location);

    friend DPoint3D operator*(DPoint3D point, const DMat44& matrix) { return point *= matrix; }
    friend DPoint3D operator*(DPoint3D point, const Location& location) { return point *= location; }
    friend constexpr DPoint3D operator+(const DPoint3D& p, const DVec3& v) {
        return {p.x + v.x, p.y + v.y, p.z + v.z};
    }
    friend constexpr DVec3 operator-(const DPoint3D& a, const DPoint3D& b) {
        return {a.x - b.x, a.y - b.y, a.z - b.z};
    }
    friend constexpr bool operator==(const DPoint3D&, const DPoint3D&) = default;
};

}  // namespace dg
