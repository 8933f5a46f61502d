// The lines on which the surfaces of two parts run through each other.

#pragma once

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "app/lineart/Curve.h"
#include "app/lineart/PlacedMesh.h"
#include "app/lineart/TriangleTree.h"

namespace zrsheet {

/// The pairs of meshes whose boxes in the world overlap, by number. O(n log n) and O(pairs along one axis).
[[nodiscard]] std::vector<std::pair<std::uint32_t, std::uint32_t>> OverlappingPairs(
    std::span<const PlacedMesh> meshes);

/// The curves where two bodies run through each other. Surfaces that only touch, or
/// that cross at so flat an angle that the facets of one curved surface could do so with those of another
/// beside it, give none. Cost: O(overlapping triangles), cut off where that is absurdly many.
[[nodiscard]] std::vector<Curve> CrossingCurves(const PlacedMesh& a, const TriangleTree& treeA,
                                                const PlacedMesh& b, const TriangleTree& treeB);

}  // namespace zrsheet
