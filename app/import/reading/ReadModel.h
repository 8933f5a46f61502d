// Reads a model file of any known format, in the process it is called in.

#pragma once

#include <filesystem>

#include "app/import/Assembly.h"

namespace zrsheet {

/// Throws ImportError, without the file's name, when the file is of no known format or its reader refuses it.
[[nodiscard]] Assembly ReadModel(const std::filesystem::path& file);

}  // namespace zrsheet
