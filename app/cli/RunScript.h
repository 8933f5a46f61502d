// `zrsheet run`: does what a script says.

#pragma once

#include "app/cli/Requests.h"

namespace zrsheet {

/// Returns whether every command was done; what went wrong stands on standard error. Throws UserError when
/// script or project cannot be opened.
[[nodiscard]] bool RunScript(const RunRequest& request);

}  // namespace zrsheet
