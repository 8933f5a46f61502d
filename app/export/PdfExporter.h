// The sheet as pages for printing.

#pragma once

#include <string>

#include "app/sheet/Sheet.h"

namespace zrsheet {

/// PDF: the sheet and the pages of its parts list, as large as they are on paper, everything vectors but
/// shaded pictures, fonts embedded, bookmarks to each item. Equal sheets give equal bytes: the date of
/// creation is that of the environment's SOURCE_DATE_EPOCH, or a fixed one. Throws ExportError.
[[nodiscard]] std::string PdfBytes(const Sheet& sheet);

}  // namespace zrsheet
