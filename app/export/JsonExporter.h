// The parts list for programs.

#pragma once

#include <string>

#include "app/sheet/Sheet.h"

namespace zrsheet {

/// JSON in UTF-8, keys in a fixed order; bytes that are not UTF-8 become U+FFFD.
[[nodiscard]] std::string JsonText(const Sheet& sheet);

}  // namespace zrsheet
