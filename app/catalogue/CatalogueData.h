// What the catalogue's script is told: the parts list, and the model to turn.

#pragma once

#include <string>

#include "app/sheet/Sheet.h"

namespace zrsheet {

/// JSON without any '<', so that it can stand inside a script element. Instances are written as in the SVG.
[[nodiscard]] std::string CatalogueData(const Sheet& sheet);

}  // namespace zrsheet
