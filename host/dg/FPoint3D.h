// A point in single precision.

#pragma once

namespace dg {

struct FPoint3D {
    float x = 0.0F;
    float y = 0.0F;
    float z = 0.0F;

    constexpr FPoint3D() = default;
    constexpr FPoint3D(float px, float py, float pz) : x(px), y(py), z(pz) {}

    FPoint3D& operator+=(const FPoint3D& o) {
        x += o.x;
        y += o.y;
        z += o.z;
        return *this;
    }
    FPoint3D& operator-=(const FPoint3D& o) {
        x -= o.x;
        y -= o.y;
        z -= o.z;
        return *this;
    }
    friend constexpr bool operator==(const FPoint3D&, const FPoint3D&) = default;
};

}  // namespace dg
