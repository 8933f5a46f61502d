// What readers of all formats do to the tree that they found.

#pragma once

#include "app/import/Assembly.h"

namespace zrsheet {

/// Leaves out nodes without a part in or below them and gives every part and node a name: that of the parent
/// whose only child it is, of its part, or else a number. Throws ImportError if nothing is left. Requires:
/// parents before their children.
void FinishTree(Assembly& assembly);

}  // namespace zrsheet
