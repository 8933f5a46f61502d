// The sharp edges of a placed shape as curves.

#pragma once

#include <vector>

#include "app/lineart/Curve.h"
#include "app/lineart/PlacedMesh.h"

namespace zrsheet {

/// Adds the shape's sharp edges, those that come from curves rounded again. `creaseAngle` in degrees: a chain
/// that turns more has a corner. O(edges).
void AddSharpCurves(const PlacedMesh& placed, const Viewer& viewer, double creaseAngle,
                    std::vector<Curve>& curves);

}  // namespace zrsheet
