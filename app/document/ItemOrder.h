// In which order the items of the parts list are numbered.

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/document/Document.h"

namespace zrsheet {

enum class ItemOrder {
    Structure,  // as the parts stand in the product
    Name,       // by the names of the parts, as people sort
    Place,      // as the labels stand around the picture, clockwise
};

/// Of the picture, where counting around it begins.
enum class Corner { TopLeft, TopRight, BottomRight, BottomLeft };

/// Compares as people do: "Bolt 2" before "Bolt 10", upper and lower case of ASCII letters alike.
[[nodiscard]] bool IsBeforeInNaturalOrder(std::string_view a, std::string_view b);

/// All items. Those that the order says nothing of - no parts, no callout - come last, by structure; the
/// corner counts for the order by place only. O(n log n).
[[nodiscard]] std::vector<unsigned> OrderedItems(const Document& document, ItemOrder order, Corner corner);

}  // namespace zrsheet
