// Reads a STEP file (ISO 10303-21; AP203, AP214, AP242) into an assembly, in the process it is called in.

#pragma once

#include <filesystem>

#include "app/import/Assembly.h"

namespace zrsheet {

/// The product structure, with the files beside it that it refers to. Lengths become metres whatever unit the
/// file has, and its Z, which points up in CAD, becomes Y. Shapes without faces (sketches, axes) are left
/// out. What is missing or damaged is left out and told by warnings. Throws ImportError, without the file's
/// name, when nothing remains. A damaged file may take any time and memory, or the process: run this where
/// that does no harm.
[[nodiscard]] Assembly ReadStep(const std::filesystem::path& file);

}  // namespace zrsheet
