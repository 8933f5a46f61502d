// `zrsheet make`: from a model to files.

#pragma once

#include "app/cli/Requests.h"

namespace zrsheet {

/// All files are written, or none. Throws what importing, illustrating and exporting throw.
void MakeSheets(const MakeRequest& request);

}  // namespace zrsheet
