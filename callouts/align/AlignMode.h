// How labels are lined up.

#pragma once

#include <cstdint>

namespace zrcallouts {

/// The values are kept in documents and scripts: x and y list minimum, centre and maximum in different
/// orders.
enum Align_Mode : std::uint32_t {
    AlignMinX = 0,
    AlignCenterX = 1,
    AlignMaxX = 2,
    AlignMinY = 3,
    AlignMaxY = 4,
    AlignCenterY = 5,
    DistributeX = 6,
    DistributeY = 7,
    SpaceX = 8,
    SpaceY = 9,
};

}  // namespace zrcallouts
