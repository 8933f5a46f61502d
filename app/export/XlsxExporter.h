// The parts list as a workbook.

#pragma once

#include <string>

#include "app/sheet/Sheet.h"

namespace zrsheet {

/// A worksheet with the columns of ListColumnsOf, a row for every item in the sheet's order; the head stays
/// in sight and has filters. Quantities and levels are numbers, everything else is text, whatever it begins
/// with; names stand in as far as their levels. A text longer than a cell holds is cut. Equal sheets give
/// equal bytes (see FileDate.h). Throws ExportError when the system's temporary folder has no room.
[[nodiscard]] std::string XlsxBytes(const Sheet& sheet);

}  // namespace zrsheet
