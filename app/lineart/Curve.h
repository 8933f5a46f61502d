// A line in space that may become one of the picture, before it is known what of it is seen.

#pragma once

#include <cstdint>
#include <vector>

#include "dg/DPoint3D.h"
#include "dg/DVec3.h"

namespace zrsheet {

/// World coordinates.
struct CurvePoint {
    dg::DPoint3D place;  // on the triangles
    dg::DPoint3D drawn;  // on the surface that the triangles stand for
    dg::DVec3 lift;      // from `place` to where the line's own triangles do not cover it
};

/// From one point to the next.
struct CurveStep {
    bool isContour = false;     // beyond it the surface cannot be seen
    bool isTurnedAway = false;  // on the far side of a solid
    dg::DVec3 away;             // of contours: to the side where the surface is not, of length 1
};

/// `steps` are one less than `points`.
struct Curve {
    bool isCrossing = false;  // runs through the surfaces of two parts
    double slack = 0.0;       // how far the triangles may be off the surface that they stand for
    std::vector<CurvePoint> points;
    std::vector<CurveStep> steps;
};

/// A curve where it is: parts that differ by their place alone share theirs.
struct PlacedCurve {
    const Curve* curve = nullptr;
    dg::DVec3 shift;              // of all points
    std::uint32_t placement = 0;  // the part
    double bias = 0.0;            // what covers it by less does not hide it
    bool isWhole = false;         // nothing of it is before the nearest plane or outside the picture
};

}  // namespace zrsheet
