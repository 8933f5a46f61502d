// The areas of the picture as places to point at: each belongs to a part, and most to an item of the list.

#pragma once

#include <vector>

#include "app/document/Document.h"
#include "app/lineart/LineArt.h"
#include "app/sheet/Sheet.h"
#include "zrk/scene/PickScene.h"

namespace zrsheet {

/// One for each area. An id names the item and counts the item's parts in the order of the structure, seen or
/// not: neither another camera nor another name gives a part another id. O(parts and items).
[[nodiscard]] std::vector<SheetHotspot> HotspotsOf(const Document& document, const zrk::PickScene& scene,
                                                   std::vector<VisibleArea> areas);

}  // namespace zrsheet
