// A 4x4 matrix in single precision for row vectors.

#pragma once

#include <array>
#include <cstddef>

#include "dg/DMat44.h"

namespace dg {

class FMat44 {
public:
    /// The identity.
    constexpr FMat44() = default;
    explicit FMat44(const DMat44& matrix) {
        for (std::size_t i = 0; i < 16; ++i) m_values[i] = static_cast<float>(matrix(i / 4, i % 4));
    }

    constexpr float operator()(std::size_t row, std::size_t column) const {
        return m_values[row * 4 + column];
    }

private:
    std::array<float, 16> m_values{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
};

}  // namespace dg
