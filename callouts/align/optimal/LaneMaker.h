// Finds out where around the model labels may stand.

#pragma once

#include <vector>

#include "callouts/align/optimal/Lane.h"
#include "callouts/align/optimal/LaneProfile.h"
#include "callouts/align/optimal/LayoutProblem.h"

namespace zrcallouts {

struct LaneSet {
    std::vector<LaneProfile> profiles;  // that lanes follow; they stay where they are when the set is moved
    std::vector<Lane> lanes;
};

/// The lanes of the problem's pattern: stretches free of obstacles and pinned labels, in the order left,
/// right, top, bottom and then along the side. Where the page leaves no side room enough they lie at the
/// page's border, over the model. O(labels + obstacles log obstacles).
[[nodiscard]] LaneSet MakeLanes(const LayoutProblem& problem);

}  // namespace zrcallouts
