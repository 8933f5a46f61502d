// A line of the picture measured along its length.

#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "app/lineart/LineArt.h"

namespace zrsheet {

class ArtPath {
public:
    /// Requires: two points at least.
    explicit ArtPath(std::vector<ArtPoint> points);

    double Length() const { return m_lengths.back(); }
    ArtPoint At(double length) const;
    /// Of length 1 where the path has any length.
    ArtPoint DirectionAt(double length) const;
    std::vector<ArtPoint> Cut(double from, double to) const;

private:
    std::size_t StepAt(double length) const;

    std::vector<ArtPoint> m_points;
    std::vector<double> m_lengths;  // up to each point
};

/// Leaves out points as long as no part of the line moves by more than `tolerance` pixels. A closed line has
/// its first point at the end once more.
[[nodiscard]] std::vector<ArtPoint> Simplified(std::span<const ArtPoint> points, double tolerance);

}  // namespace zrsheet
