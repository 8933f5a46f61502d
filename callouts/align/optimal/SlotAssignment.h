// Shares the room of all lanes out among all labels at once.

#pragma once

#include <cstddef>
#include <vector>

#include "callouts/align/optimal/Seating.h"

namespace zrcallouts {

/// Whether the lanes are so full, and the labels so few, that `AssignSlots` is worth its time.
[[nodiscard]] bool IsNearlyFull(const Seating& seating);

/// On a sheet that is nearly full, a label only gets to where it belongs when many others move along, which
/// moving and exchanging single labels does not find. So the lanes, as long as they are by now, are cut into
/// slots, and the labels get those that cost least in all. Returns a lane for each label; nothing where
/// labels of many sizes do not fit that way. O(labels^2 * slots).
[[nodiscard]] std::vector<std::size_t> AssignSlots(const Seating& seating);

}  // namespace zrcallouts
