// Reads an IGES file into an assembly, in the process it is called in.

#pragma once

#include <filesystem>

#include "app/import/Assembly.h"

namespace zrsheet {

/// Its surfaces and bodies with names and colours, in metres and turned as STEP files are. Throws
/// ImportError, without the file's name, when there are none.
[[nodiscard]] Assembly ReadIges(const std::filesystem::path& file);

}  // namespace zrsheet
