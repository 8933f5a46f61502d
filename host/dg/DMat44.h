// A 4x4 matrix in double precision for row vectors: p' = p x M, the translation in the last row.

#pragma once

#include <array>
#include <cstddef>

namespace dg {

class DMat44 {
public:
    static const DMat44 IDENTITY;

    /// The identity.
    constexpr DMat44() = default;
    /// Row by row.
    constexpr explicit DMat44(const std::array<double, 16>& values) : m_values(values) {}

    constexpr double operator()(std::size_t row, std::size_t column) const {
        return m_values[row * 4 + column];
    }
    constexpr double& operator()(std::size_t row, std::size_t column) { return m_values[row * 4 + column]; }

    /// The inverse; the identity when there is none.
    DMat44 Invert() const;
    /// Of the linear part: negative when the matrix mirrors.
    double LinearDeterminant() const;

    /// First `a`, then `b`.
    friend DMat44 operator*(const DMat44& a, const DMat44& b);
    friend constexpr bool operator==(const DMat44&, const DMat44&) = default;

private:
    std::array<double, 16> m_values{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
};

inline constexpr DMat44 DMat44::IDENTITY{};

}  // namespace dg
