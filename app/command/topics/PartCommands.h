// Commands about the parts of the model.

#pragma once

#include "app/command/Command.h"

namespace zrsheet {

[[nodiscard]] CommandTopic PartCommands();

}  // namespace zrsheet
