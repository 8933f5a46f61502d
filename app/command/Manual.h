// The texts that tell about the language, all made from the table of commands.

#pragma once

#include <string>

#include "app/command/CommandTable.h"

namespace zrsheet {

/// Every command in one line.
[[nodiscard]] std::string HelpOverview(const CommandTable& table);
/// About a command, or all that begin with a word. Throws UserError when there is none.
[[nodiscard]] std::string HelpFor(const CommandTable& table, const std::string& name);
/// The whole language as a page of Markdown.
[[nodiscard]] std::string ManualPage(const CommandTable& table);

}  // namespace zrsheet
