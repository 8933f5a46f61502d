#include "dg/DMat44.h"

#include <cmath>
#include <utility>

namespace dg {
namespace {

using Rows = std::array<std::array<double, 8>, 4>;

/// The matrix with the identity beside it, for elimination.
Rows Augment(const DMat44& matrix) {
    Rows rows{};
    for (std::size_t r = 0; r < 4; ++r) {
        for (std::size_t c = 0; c < 4; ++c) rows[r][c] = matrix(r, c);
        rows[r][4 + r] = 1.0;
    }
    return rows;
}

std::size_t PivotRow(const Rows& rows, std::size_t column) {
    std::size_t pivot = column;
    for (std::size_t r = column + 1; r < 4; ++r) {
        if (std::abs(rows[r][column]) > std::abs(rows[pivot][column])) pivot = r;
    }
    return pivot;
}

void EliminateColumn(Rows& rows, std::size_t column) {
    const double scale = 1.0 / rows[column][column];
    for (double& value : rows[column]) value *= scale;
    for (std::size_t r = 0; r < 4; ++r) {
        const double factor = rows[r][column];
        if (r == column || factor == 0.0) continue;
        for (std::size_t c = 0; c < 8; ++c) rows[r][c] -= factor * rows[column][c];
    }
}

}  // namespace

// Gauss-Jordan elimination with row pivoting.
DMat44 DMat44::Invert() const {
    Rows rows = Augment(*this);
    for (std::size_t column = 0; column < 4; ++column) {
        const std::size_t pivot = PivotRow(rows, column);
        if (rows[pivot][column] == 0.0 || !std::isfinite(rows[pivot][column])) return IDENTITY;
        std::swap(rows[column], rows[pivot]);
        EliminateColumn(rows, column);
    }
    DMat44 inverse;
    for (std::size_t r = 0; r < 4; ++r) {
        for (std::size_t c = 0; c < 4; ++c) inverse(r, c) = rows[r][4 + c];
    }
    return inverse;
}

double DMat44::LinearDeterminant() const {
    const DMat44& m = *this;
    return m(0, 0) * (m(1, 1) * m(2, 2) - m(1, 2) * m(2, 1)) -
           m(0, 1) * (m(1, 0) * m(2, 2) - m(1, 2) * m(2, 0)) +
           m(0, 2) * (m(1, 0) * m(2, 1) - m(1, 1) * m(2, 0));
}

DMat44 operator*(const DMat44& a, const DMat44& b) {
    DMat44 product;
    for (std::size_t r = 0; r < 4; ++r) {
        for (std::size_t c = 0; c < 4; ++c) {
            product(r, c) = a(r, 0) * b(0, c) + a(r, 1) * b(1, c) + a(r, 2) * b(2, c) + a(r, 3) * b(3, c);
        }
    }
    return product;
}

}  // namespace dg
