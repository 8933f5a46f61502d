// The parts list for programs.

#pragma once

#include <string>

#include "app/sheet/Sheet.h"

namespace zrsheet {

/// JSON in UTF-8, keys in a fixed order; bytes that are not UTF-8 become U+FFFD. Items have
/// all that is known, or what the author chose.
[[nodiscard]] std::string JsonText(const Sheet& sheet);

}  // namespace zrsheet
