// `zrsheet check`: tells what an illustration still lacks.

#pragma once

#include "app/cli/Requests.h"

namespace zrsheet {

/// Returns whether nothing was found; what was stands on standard output. Throws UserError when project or
/// model cannot be opened.
[[nodiscard]] bool CheckProject(const CheckRequest& request);

}  // namespace zrsheet
