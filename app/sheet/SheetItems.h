// The parts list of a document as rows of the sheet.

#pragma once

#include <vector>

#include "app/sheet/Sheet.h"
#include "zrk/illustration/ItemsList.h"

namespace zrsheet {

/// By number, whatever the order of the structure, without items that have no label as they take no part; the
/// contents of a kit follow it. O(n log n) in the items, and their instances.
[[nodiscard]] std::vector<SheetItem> ListedItems(const zrk::illustration::ItemsList& items);

}  // namespace zrsheet
