// A colour: red, green, blue and alpha, each from 0 to 1.

#pragma once

namespace dg {

struct Color {
    float r = 0.0F;
    float g = 0.0F;
    float b = 0.0F;
    float a = 1.0F;

    constexpr Color() = default;
    constexpr Color(float red, float green, float blue, float alpha) : r(red), g(green), b(blue), a(alpha) {}

    friend constexpr bool operator==(const Color&, const Color&) = default;
};

}  // namespace dg
