// Commands about taking back.

#pragma once

#include "app/command/Command.h"

namespace zrsheet {

[[nodiscard]] CommandTopic HistoryCommands();

}  // namespace zrsheet
