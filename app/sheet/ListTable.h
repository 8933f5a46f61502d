// The parts list as a table of texts: what goes into which column.

#pragma once

#include <string>
#include <vector>

#include "app/document/ListColumn.h"
#include "app/sheet/Sheet.h"

namespace zrsheet {

/// Those that the author chose; else item, quantity, the level where the list has several, name, tag, and
/// every property that any item has, by name.
[[nodiscard]] std::vector<ListColumn> ListColumnsOf(const Sheet& sheet);

/// What the item has in the column; empty when it has no such property.
[[nodiscard]] std::string CellText(const SheetItem& item, const ListColumn& column);

/// Of files, whatever the sheet's language: "Item", "Quantity" ... or the property's name.
[[nodiscard]] std::string HeadText(const ListColumn& column);

}  // namespace zrsheet
