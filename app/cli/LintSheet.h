// "zrsheet lint": how good the places of a sheet's labels are.

#pragma once

#include "app/cli/Requests.h"

namespace zrsheet {

/// Prints the figures of the project's sheet, or of the one that "make" would make of the model. Returns
/// whether there are no faults. Throws UserError, ImportError or FileError.
bool LintSheet(const LintRequest& request);

}  // namespace zrsheet
