// Rounds what was a curve before it was cut into straight pieces: the rim of a hole, not the corner of a
// plate.

#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "dg/DPoint3D.h"
#include "dg/DVec3.h"

namespace zrsheet {

/// A chain of points as a smooth curve through them.
class CurveSmoothing {
public:
    /// The curve bends where the chain turns less than `creaseAngle` degrees. A closed chain has its first
    /// point at the end once more.
    CurveSmoothing(std::span<const dg::DPoint3D> points, double creaseAngle);

    /// How far the curve leaves the straight line between the point and the next.
    double Bulge(std::size_t step) const;
    /// On the straight line between the point (share 0) and the next (share 1).
    dg::DPoint3D Straight(std::size_t step, double share) const {
        return m_points[step] + (m_points[step + 1] - m_points[step]) * share;
    }
    /// The curve between the point (share 0) and the next (share 1).
    dg::DPoint3D At(std::size_t step, double share) const;

private:
    /// At both ends of a step; of length 1.
    struct Tangents {
        dg::DVec3 start;
        dg::DVec3 end;
    };

    void Bend(std::size_t before, std::size_t after);

    std::vector<dg::DPoint3D> m_points;
    std::vector<Tangents> m_tangents;
    double m_creaseCosine;
};

}  // namespace zrsheet
