// The sheet as a page that readers work with: picture, parts list and a model to turn, in step.

#pragma once

#include <string>

#include "app/sheet/Sheet.h"

namespace zrsheet {

/// One file that needs nothing else and may fetch nothing. `svg` is the sheet's picture (see SvgExporter.h).
/// Whatever parts are called, it stays text. Equal sheets give equal bytes.
[[nodiscard]] std::string CatalogueHtml(const Sheet& sheet, const std::string& svg);

}  // namespace zrsheet
