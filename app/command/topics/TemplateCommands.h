// Commands about label templates.

#pragma once

#include "app/command/Command.h"

namespace zrsheet {

[[nodiscard]] CommandTopic TemplateCommands();

}  // namespace zrsheet
