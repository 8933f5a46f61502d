// The cheapest way to give each of some things one of some places.

#pragma once

#include <cstddef>
#include <vector>

#include "callouts/ZrcalloutsExport.h"

namespace zrcallouts {

/// The place of each thing; `costs[thing][place]`. Requires: no fewer places than things. Kuhn's and Munkres'
/// method with shortest paths, O(things^2 * places).
[[nodiscard]] ZRCALLOUTS_API std::vector<std::size_t> CheapestAssignment(
    const std::vector<std::vector<double>>& costs);

}  // namespace zrcallouts
