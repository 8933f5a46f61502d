// Mends bodies whose sphere faces cover the wrong part of their sphere.

#pragma once

#include <TopoDS_Shape.hxx>

namespace zrsheet {

/// A loop on a sphere bounds two faces, what is inside and what is outside of it, and only the loop's sense
/// tells which one is meant. Some programs write it turned, so that a face covers its neighbours on the same
/// sphere. Such faces are exchanged for what they leave over, and the body is turned to face outwards.
/// Returns the mended body, or the same one if nothing overlaps; new faces have no triangles yet. Requires:
/// the body is triangulated.
[[nodiscard]] TopoDS_Shape WithTrueSpheres(const TopoDS_Shape& shape);

}  // namespace zrsheet
