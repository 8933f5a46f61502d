// Writes an assembly as a binary glTF 2.0 file.

#pragma once

#include <string>

#include "app/import/Assembly.h"

namespace zrsheet {

/// The file's bytes: one mesh for each part, one node for each node, properties as extras. The same assembly
/// always gives the same bytes.
[[nodiscard]] std::string WriteGlb(const Assembly& assembly);

}  // namespace zrsheet
