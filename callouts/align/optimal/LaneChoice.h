// Chooses a lane for every label.

#pragma once

#include <cstddef>
#include <vector>

#include "callouts/align/optimal/Seating.h"

namespace zrcallouts {

/// Each label gets the lane where it costs least. Where more come together than a lane holds, those go
/// elsewhere that lose least by it, through other lanes if need be: every single way is the cheapest there
/// is. When all lanes are full, those with room on the page get a second row; what still does not fit
/// stays. Returns a lane for each label. O(n log n) for any one number of lanes.
[[nodiscard]] std::vector<std::size_t> ChooseLanes(Seating& seating);

/// The lanes of the sides that the labels are on already. Returns nothing when one is on none, or when there
/// are more on a lane than it holds. O(n) for any one number of lanes.
[[nodiscard]] std::vector<std::size_t> KeepLanes(const Seating& seating);

}  // namespace zrcallouts
