// The parts list of a document as rows of the sheet.

#pragma once

#include <vector>

#include "app/sheet/Sheet.h"
#include "zrk/illustration/ItemsList.h"

namespace zrsheet {

/// In list order, without those that have no label as they take no part. O(items and their instances).
[[nodiscard]] std::vector<SheetItem> ListedItems(const zrk::illustration::ItemsList& items);

}  // namespace zrsheet
