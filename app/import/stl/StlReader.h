// Reads an STL file, binary or text, into an assembly of one part, in the process it is called in.

#pragma once

#include <filesystem>

#include "app/import/Assembly.h"

namespace zrsheet {

/// STL has no unit and no axes: it is taken as millimetres with Z upwards, as CAD and printing programs write
/// it. Triangles that meet share vertices. Throws ImportError, without the file's name, if the file is
/// damaged or has no triangles. Linear.
[[nodiscard]] Assembly ReadStl(const std::filesystem::path& file);

}  // namespace zrsheet
