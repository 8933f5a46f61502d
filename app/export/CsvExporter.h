// The parts list for spreadsheets.

#pragma once

#include <string>

#include "app/sheet/Sheet.h"

namespace zrsheet {

/// RFC 4180 in UTF-8 with the columns of ListColumnsOf, a row for every item in the sheet's order. Texts that
/// a spreadsheet would run as a formula have an apostrophe in front.
[[nodiscard]] std::string CsvText(const Sheet& sheet);

}  // namespace zrsheet
