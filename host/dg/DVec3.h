// A direction or displacement in double precision.

#pragma once

#include <cmath>

namespace dg {

struct DVec3 {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    constexpr DVec3() = default;
    constexpr DVec3(double vx, double vy, double vz) : x(vx), y(vy), z(vz) {}

    constexpr double Dot(const DVec3& o) const { return x * o.x + y * o.y + z * o.z; }
    constexpr DVec3 Cross(const DVec3& o) const {
        return {y * o.z - z * o.y, z * o.x - x * o.z, x * o.y - y * o.x};
    }
    double Length() const { return std::sqrt(Dot(*this)); }
    /// Of length 1; a vector of length 0 stays as it is.
    DVec3 Normalized() const {
        const double length = Length();
        return length > 0.0 ? DVec3(x / length, y / length, z / length) : *this;
    }

    friend constexpr DVec3 operator+(const DVec3& a, const DVec3& b) {
        return {a.x + b.x, a.y + b.y, a.z + b.z};
    }
    friend constexpr DVec3 operator-(const DVec3& a, const DVec3& b) {
        return {a.x - b.x, a.y - b.y, a.z - b.z};
    }
    friend constexpr DVec3 operator*(const DVec3& v, double s) { return {v.x * s, v.y * s, v.z * s}; }
    friend constexpr bool operator==(const DVec3&, const DVec3&) = default;
};

}  // namespace dg
