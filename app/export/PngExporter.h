// The sheet as a bitmap.

#pragma once

#include <string>

#include "app/sheet/Sheet.h"

namespace zrsheet {

/// The same page as the SVG, `scale` bitmap pixels to a page pixel. Throws ExportError when a bitmap cannot
/// be that large. Requires: scale at least 1.
[[nodiscard]] std::string PngBytes(const Sheet& sheet, int scale = 1);

}  // namespace zrsheet
