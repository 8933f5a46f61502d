#include "app/sheet/ListTable.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <set>

namespace zrsheet {

std::vector<ListColumn> ListColumnsOf(const Sheet& sheet) {
    std::vector<ListColumn> columns;
    for (const std::string& word : sheet.listColumns) columns.push_back(ListColumnOf(word));
    if (!columns.empty()) return columns;
    const bool hasLevels = std::any_of(sheet.items.begin(), sheet.items.end(),
                                       [](const SheetItem& item) { return item.level > 0; });
    columns = {{ListField::Item, {}}, {ListField::Quantity, {}}};
    if (hasLevels) columns.push_back({ListField::Level, {}});
    columns.insert(columns.end(), {{ListField::Name, {}}, {ListField::Tag, {}}});
    std::set<std::string> properties;
    for (const SheetItem& item : sheet.items) {
        for (const auto& [name, value] : item.properties) properties.insert(name);
    }
    for (const std::string& name : properties) columns.push_back({ListField::Property, name});
    return columns;
}

std::string CellText(const SheetItem& item, const ListColumn& column) {
    switch (column.field) {
        case ListField::Item:
            return item.label;
        case ListField::Quantity:
            return std::to_string(item.quantity);
        case ListField::Name:
            return item.name;
        case ListField::Tag:
            return item.tag;
        case ListField::Level:
            return std::to_string(item.level);
        case ListField::Property:
            break;
    }
    const auto property = item.properties.find(column.property);
    return property == item.properties.end() ? std::string() : property->second;
}

std::string HeadText(const ListColumn& column) {
    constexpr std::array<const char*, 5> kHeads{"Item", "Quantity", "Name", "Tag", "Level"};
    if (column.field == ListField::Property) return column.property;
    return kHeads.at(static_cast<std::size_t>(column.field));
}

}  // namespace zrsheet
