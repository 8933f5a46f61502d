// The contours of smooth surfaces: where they turn away from the eye.

#pragma once

#include <vector>

#include "app/lineart/Curve.h"
#include "app/lineart/PlacedMesh.h"

namespace zrsheet {

/// Where the contour crosses the edge between two corners that face different ways. `size` is the part's.
[[nodiscard]] CurvePoint ContourPoint(const PlacedMesh::Corner& a, const PlacedMesh::Corner& b, double size);

/// Adds the curves on which the smoothed normal stands square to the look. They run across the triangles, so
/// that they are smooth where the triangles' own outline goes to and fro. O(triangles).
void AddSmoothContours(const PlacedMesh& placed, const Viewer& viewer, std::vector<Curve>& curves);

}  // namespace zrsheet
