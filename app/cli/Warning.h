// Tells the person at the terminal what is missing in what they get.

#pragma once

#include <string>

namespace zrsheet {

/// One line on standard error.
void PrintWarning(const std::string& line);

}  // namespace zrsheet
