// Commands about 3-D symbols.

#pragma once

#include "app/command/Command.h"

namespace zrsheet {

[[nodiscard]] CommandTopic SymbolCommands();

}  // namespace zrsheet
