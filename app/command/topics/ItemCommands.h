// Commands about the parts list.

#pragma once

#include "app/command/Command.h"

namespace zrsheet {

[[nodiscard]] CommandTopic ItemCommands();

}  // namespace zrsheet
