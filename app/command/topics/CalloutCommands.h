// Commands about callouts.

#pragma once

#include "app/command/Command.h"

namespace zrsheet {

[[nodiscard]] CommandTopic CalloutCommands();

}  // namespace zrsheet
