// Commands about magnified cut-outs.

#pragma once

#include "app/command/Command.h"

namespace zrsheet {

[[nodiscard]] CommandTopic InsetCommands();

}  // namespace zrsheet
