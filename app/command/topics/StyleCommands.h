// Commands about how callouts look.

#pragma once

#include "app/command/Command.h"

namespace zrsheet {

[[nodiscard]] CommandTopic StyleCommands();

}  // namespace zrsheet
