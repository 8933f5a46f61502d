// A direction or displacement in single precision.

#pragma once

namespace dg {

struct FVec3 {
    float x = 0.0F;
    float y = 0.0F;
    float z = 0.0F;

    constexpr FVec3() = default;
    constexpr FVec3(float vx, float vy, float vz) : x(vx), y(vy), z(vz) {}

    friend constexpr bool operator==(const FVec3&, const FVec3&) = default;
};

}  // namespace dg
