// Where a part stands: a linear part (rotation, scale, shear) and a position.

#pragma once

#include "dg/DMat44.h"
#include "dg/DPoint3D.h"
#include "dg/FMat33.h"
#include "dg/FVec3.h"

namespace dg {

class Location {
public:
    static const Location IDENTITY;

    constexpr Location() = default;
    constexpr Location(const FMat33& matrix, const DPoint3D& position)
        : m_matrix(matrix), m_position(position) {}
    /// The affine part of a matrix.
    explicit Location(const DMat44& matrix);

    const DPoint3D& GetPos() const { return m_position; }
    void SetPos(const DPoint3D& position) { m_position = position; }
    const FMat33& GetMat() const { return m_matrix; }
    void SetMat(const FMat33& matrix) { m_matrix = matrix; }
    /// How much each local axis is stretched: the lengths of the rows.
    FVec3 GetScale() const;
    /// From local to outer coordinates: the linear part, then the translation.
    DMat44 GetXform() const;

    friend constexpr bool operator==(const Location&, const Location&) = default;

private:
    FMat33 m_matrix;
    DPoint3D m_position;
};

inline constexpr Location Location::IDENTITY{};

}  // namespace dg
