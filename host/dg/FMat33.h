// A 3x3 matrix in single precision for row vectors: the linear part of a location.

#pragma once

#include <array>
#include <cstddef>

#include "dg/FVec3.h"

namespace dg {

class FMat33 {
public:
    static const FMat33 IDENTITY;

    /// The identity.
    constexpr FMat33() = default;
    /// Row by row.
    constexpr explicit FMat33(const std::array<float, 9>& values) : m_values(values) {}
    static constexpr FMat33 Scale(const FVec3& scale) {
        return FMat33({scale.x, 0, 0, 0, scale.y, 0, 0, 0, scale.z});
    }

    constexpr float operator()(std::size_t row, std::size_t column) const {
        return m_values[row * 3 + column];
    }

    friend constexpr bool operator==(const FMat33&, const FMat33&) = default;

private:
    std::array<float, 9> m_values{1, 0, 0, 0, 1, 0, 0, 0, 1};
};

inline constexpr FMat33 FMat33::IDENTITY{};

}  // namespace dg
