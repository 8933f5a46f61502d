// Commands about camera, page and language.

#pragma once

#include "app/command/Command.h"

namespace zrsheet {

[[nodiscard]] CommandTopic PictureCommands();

}  // namespace zrsheet
