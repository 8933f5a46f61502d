// Commands about opening, saving and writing files.

#pragma once

#include "app/command/Command.h"

namespace zrsheet {

[[nodiscard]] CommandTopic FileCommands();

}  // namespace zrsheet
