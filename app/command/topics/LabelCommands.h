// Commands about the labels of callouts.

#pragma once

#include "app/command/Command.h"

namespace zrsheet {

[[nodiscard]] CommandTopic LabelCommands();

}  // namespace zrsheet
