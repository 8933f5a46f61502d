// Finds the shortest layout without faults.

#pragma once

#include "callouts/ZrcalloutsExport.h"
#include "callouts/align/optimal/LayoutProblem.h"

namespace zrcallouts {

/// Places the labels beside the model so that none covers another, an obstacle, the model or the page's
/// border, no leaders cross, none runs into a foreign label, and all leaders together are as short as can be
/// or nearly so. The same problem has the same answer. Labels hardly move when the problem hardly changes:
/// they change sides and order only where that is worth some pixels. O(n log n) where labels have room, up
/// to O(n^2) for leaders that all come near each other. Any thread.
///
/// Returns a centre for each label; those of pinned ones stay. Labels that find no room lie over the ends of
/// the lanes, where MeasureLayout finds them.
[[nodiscard]] ZRCALLOUTS_API std::vector<ScreenPoint> SolveLayout(const LayoutProblem& problem);

}  // namespace zrcallouts
