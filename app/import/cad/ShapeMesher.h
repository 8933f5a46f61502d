// Triangulates the exact surfaces of a body.

#pragma once

#include <TopoDS_Shape.hxx>

#include "app/import/Assembly.h"

namespace zrsheet {

/// A body as triangles.
struct MeshedShape {
    AssemblyPart part;     // without a name; without triangles if there are none
    int damagedFaces = 0;  // that are missing in it
};

/// The body in its own space, in metres from the kernel's millimetres. Faces that meet share their vertices,
/// and the part's edges are those of the body. Finer than one two-thousandth of the body's size and than 14
/// degrees between neighbouring triangles. The same for the same shape on any number of threads; uses all
/// cores. Throws ImportError when the kernel fails.
[[nodiscard]] MeshedShape MeshShape(const TopoDS_Shape& shape);

}  // namespace zrsheet
