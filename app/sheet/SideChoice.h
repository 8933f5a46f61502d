// Chooses the side of the picture for every balloon.

#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "app/sheet/LabelTidy.h"
#include "app/sheet/Sheet.h"

namespace zrsheet {

enum BalloonSide : std::size_t { kLeftSide, kRightSide, kTopSide, kBottomSide, kBalloonSides };

/// The side of `model` that each balloon's anchor is nearest to; upright sides win ties, and so do the left
/// and the top. Where more come together than `rooms` (pixels along each side) hold, those go elsewhere that
/// lose least by it; when all sides are full they stay. `gap` is kept between balloons. O(n log n).
[[nodiscard]] std::vector<BalloonSide> ChooseSides(const std::vector<Balloon>& balloons, const PageBox& model,
                                                   const std::array<double, kBalloonSides>& rooms,
                                                   double gap);

}  // namespace zrsheet
