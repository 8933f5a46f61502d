#include "dg/Location.h"

#include <array>
#include <cmath>

namespace dg {
namespace {

FMat33 LinearPart(const DMat44& matrix) {
    std::array<float, 9> values{};
    for (std::size_t i = 0; i < values.size(); ++i) values[i] = static_cast<float>(matrix(i / 3, i % 3));
    return FMat33(values);
}

float RowLength(const FMat33& matrix, std::size_t row) {
    return std::hypot(matrix(row, 0), matrix(row, 1), matrix(row, 2));
}

}  // namespace

Location::Location(const DMat44& matrix)
    : m_matrix(LinearPart(matrix)), m_position(matrix(3, 0), matrix(3, 1), matrix(3, 2)) {}

FVec3 Location::GetScale() const {
    return {RowLength(m_matrix, 0), RowLength(m_matrix, 1), RowLength(m_matrix, 2)};
}

DMat44 Location::GetXform() const {
    DMat44 xform;
    for (std::size_t r = 0; r < 3; ++r) {
        for (std::size_t c = 0; c < 3; ++c) xform(r, c) = static_cast<double>(m_matrix(r, c));
    }
    xform(3, 0) = m_position.x;
    xform(3, 1) = m_position.y;
    xform(3, 2) = m_position.z;
    return xform;
}

}  // namespace dg
