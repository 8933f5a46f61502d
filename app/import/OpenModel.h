// What the application does when it is given a model: reads it, or remembers what it read the last time.

#pragma once

#include <filesystem>

#include "app/import/Assembly.h"
#include "app/import/process/ImportModel.h"

namespace zrsheet {

/// ImportModel through the user's cache, which keeps models that take longer than half a second. Throws
/// ImportError. Any thread.
[[nodiscard]] Assembly OpenModel(const std::filesystem::path& file, const ImportProgress& progress = {});

}  // namespace zrsheet
