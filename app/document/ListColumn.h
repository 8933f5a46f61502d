// A column of the parts list, as authors name it.

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zrsheet {

enum class ListField { Item, Quantity, Name, Tag, Level, Property };

struct ListColumn {
    ListField field = ListField::Item;
    std::string property;  // the name, of a property's column

    friend bool operator==(const ListColumn&, const ListColumn&) = default;
};

/// item, quantity, name, tag, level, or property:NAME.
[[nodiscard]] bool IsListColumn(std::string_view word);
/// Requires: it is one.
[[nodiscard]] ListColumn ListColumnOf(std::string_view word);
/// The words between the commas. Throws UserError when one of them is no column.
[[nodiscard]] std::vector<std::string> ParseListColumns(std::string_view words);

}  // namespace zrsheet
