#include "app/export/JsonExporter.h"

#include <nlohmann/json.hpp>

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

}  // namespace

std::string JsonText(const Sheet& sheet) {
    Json document{
        {"schema", 1}, {"title", sheet.title}, {"language", sheet.language}, {"items", Json::array()}};
    for (const SheetItem& item : sheet.items) document["items"].push_back(ItemJson(item));
    return document.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace zrsheet
