// Solids built up along z from flat regions: shafts, bolts, gears, covers.

#pragma once

#include "app/sample/Contour.h"
#include "app/sample/SolidMesh.h"

namespace zrsheet {

/// A cut through the solid at height z. Two stations at different heights are joined by walls, contour by
/// contour and corner by corner (a chamfer, if they differ in size); two at the same height by the flat face
/// between them.
struct Station {
    double z = 0.0;
    Region region;
};

/// The closed surface round the stations, given from the bottom up.
/// Requires: stations joined by walls have equally many contours and corners; of two at one height, one lies
/// inside the other, and their contours touch along common edges or not at all.
[[nodiscard]] SolidMesh BuildPrism(const std::vector<Station>& stations);

/// Turns a closed profile of points (distance from the axis, height) once round the z axis. The profile runs
/// counter-clockwise when the distance goes right and the height up; it may touch the axis with its ends.
[[nodiscard]] SolidMesh Revolve(const Contour& profile, int steps);

}  // namespace zrsheet
