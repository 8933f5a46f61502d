// An axis-aligned box in single precision.

#pragma once

#include <cfloat>

#include "dg/FMat44.h"
#include "dg/FPoint3D.h"
#include "dg/Location.h"

namespace dg {

struct FBox {
    FPoint3D min{FLT_MAX, FLT_MAX, FLT_MAX};
    FPoint3D max{-FLT_MAX, -FLT_MAX, -FLT_MAX};

    /// Holds nothing; the box to start enclosing from.
    static const FBox EMPTY;

    bool IsEmpty() const { return *this == FBox(); }
    void Enclose(const FPoint3D& point);
    /// The empty box adds nothing.
    void Enclose(const FBox& box);

    /// The box around the eight moved corners; the empty box stays empty.
    FBox operator*(const Location& location) const;
    FBox operator*(const FMat44& matrix) const;

    friend constexpr bool operator==(const FBox&, const FBox&) = default;
};

inline constexpr FBox FBox::EMPTY{};

}  // namespace dg
