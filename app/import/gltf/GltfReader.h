// Reads a glTF file into an assembly, in the process it is called in.

#pragma once

#include <filesystem>

#include "app/import/Assembly.h"

namespace zrsheet {

/// The scene that the file shows, else its first, else all of its nodes. A node with a mesh and children
/// becomes an assembly whose first child is a leaf with the mesh. Nodes without triangles below are left out.
/// Nameless nodes get the name of their mesh, of the parent whose only child they are, of their part, or else
/// a number. Throws ImportError, without the file's name, if the file is damaged, its nodes are no tree, the
/// tree is deeper than 10,000, or there are no triangles in it. Memory of a damaged file is bounded by its
/// size only roughly: run this where that does no harm.
[[nodiscard]] Assembly ReadGltf(const std::filesystem::path& file);

}  // namespace zrsheet
