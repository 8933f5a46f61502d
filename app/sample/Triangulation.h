// Fills flat regions with triangles between their own corners.

#pragma once

#include <array>
#include <vector>

#include "app/sample/Contour.h"

namespace zrsheet {

/// Triangles, counter-clockwise, that cover the region. Every corner of the region is used and none is added,
/// so that neighbours fit. Requires: contours do not touch each other, and the first encloses all others. Ear
/// clipping: the cost grows with the square of the number of corners.
[[nodiscard]] std::vector<std::array<Point2, 3>> Triangulate(const Region& region);

}  // namespace zrsheet
