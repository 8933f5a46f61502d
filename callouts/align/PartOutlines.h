// What the parts cover on the screen, as far as labels mind.

#pragma once

#include <vector>

#include "callouts/ZrcalloutsExport.h"
#include "callouts/align/optimal/LayoutProblem.h"
#include "dg/DMat44.h"
#include "zrk/scene/ShapeScene.h"

namespace zrcallouts {

/// The convex outline of every part that is shown, in the scene's order. O(n log n) for n vertices.
[[nodiscard]] ZRCALLOUTS_API std::vector<ModelArea> OutlinesOfParts(const zrk::ShapeScene& scene,
                                                                    const dg::DMat44& worldToPixel);
/// The box around all of them; `none` if none is shown. O(vertices).
[[nodiscard]] ScreenBox BoxOfParts(const zrk::ShapeScene& scene, const dg::DMat44& worldToPixel,
                                   const ScreenBox& none);

}  // namespace zrcallouts
