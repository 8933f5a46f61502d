// Checks that the parts of a project fit each other.

#pragma once

#include "app/project/ProjectData.h"

namespace zrsheet {

/// Throws ProjectFault for a name or number that is used twice, names nothing, or leads in a circle, and for
/// a camera that shows nothing. Requires: each value by itself is what its rule says. O(n log n).
void CheckProject(const ProjectData& project);

}  // namespace zrsheet
