// The parts list for spreadsheets.

#pragma once

#include <string>

#include "app/sheet/Sheet.h"

namespace zrsheet {

/// RFC 4180 in UTF-8: Item (its label), Quantity, Name and Tag, then a column for every property that any
/// item has, by name. A row for every item in the sheet's order. Texts are written as they are: one that
/// begins like a formula remains the part's name.
[[nodiscard]] std::string CsvText(const Sheet& sheet);

}  // namespace zrsheet
