// Commands about callouts.

#pragma once

#include "app/command/Command.h"

namespace zrsheet {

[[nodiscard]] CommandTopic CreationCommands();

}  // namespace zrsheet
