// What every solid of the sample promises, and what it weighs.

#pragma once

#include "app/import/Assembly.h"

namespace zrsheet {

/// Every edge twice, once in each direction, and no surface folded back onto itself.
void ExpectClosed(const AssemblyPart& part);

/// Enclosed volume in cubic millimetres; negative if the surface faces inwards.
[[nodiscard]] double Volume(const AssemblyPart& part);

}  // namespace zrsheet
