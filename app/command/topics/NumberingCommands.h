// Commands that number the parts list.

#pragma once

#include "app/command/Command.h"

namespace zrsheet {

[[nodiscard]] CommandTopic NumberingCommands();

}  // namespace zrsheet
