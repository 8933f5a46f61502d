// Commands about finding things, and help.

#pragma once

#include "app/command/Command.h"

namespace zrsheet {

[[nodiscard]] CommandTopic ListCommands();

}  // namespace zrsheet
