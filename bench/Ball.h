// A part for measuring, as finely meshed as parts of machines are.

#pragma once

#include "du/SmartPtr.h"
#include "zrg/Shape.h"

namespace zrbench {

/// A ball of radius 1: `rings` rings of twice as many vertices.
du::SmartPtr<zrg::Shape> Ball(unsigned rings);

}  // namespace zrbench
