#include "app/export/JsonExporter.h"

#include <nlohmann/json.hpp>
#include <vector>

#include "app/sheet/ListTable.h"

namespace zrsheet {
namespace {

using Json = nlohmann::ordered_json;

Json ItemJson(const SheetItem& item) {
    Json properties = Json::object();
    for (const auto& [name, value] : item.properties) properties[name] = value;
    return {{"itemId", item.itemId},
            {"label", item.label},
            {"quantity", item.quantity},
            {"name", item.name},
            {"tag", item.tag},
            {"level", item.level},
            {"properties", std::move(properties)},
            {"instances", item.instances}};
}

/// What the author chose of it, in that order; the ids remain.
Json ChosenJson(const SheetItem& item, const std::vector<std::string>& words) {
    const Json all = ItemJson(item);
    Json chosen{{"itemId", item.itemId}};
    for (const std::string& word : words) {
        const ListColumn column = ListColumnOf(word);
        if (column.field == ListField::Property) {
            chosen["properties"][column.property] = CellText(item, column);
        } else {
            const std::string key = column.field == ListField::Item ? "label" : word;
            chosen[key] = all[key];
        }
    }
    return chosen;
}

}  // namespace

std::string JsonText(const Sheet& sheet) {
    Json document{
        {"schema", 1}, {"title", sheet.title}, {"language", sheet.language}, {"items", Json::array()}};
    for (const SheetItem& item : sheet.items) {
        document["items"].push_back(sheet.listColumns.empty() ? ItemJson(item)
                                                              : ChosenJson(item, sheet.listColumns));
    }
    return document.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace zrsheet
