#include "app/cli/Warning.h"

#include <iostream>

namespace zrsheet {

void PrintWarning(const std::string& line) { std::cerr << "zrsheet: warning: " << line << std::endl; }

}  // namespace zrsheet
