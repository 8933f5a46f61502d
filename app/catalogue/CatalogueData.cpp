#include "app/catalogue/CatalogueData.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <map>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "app/catalogue/PackedMesh.h"
#include "app/document/StyleChoices.h"
#include "app/file/Base64.h"
#include "app/render/CleanText.h"
#include "dg/DPoint3D.h"
#include "du/Localizer.h"

namespace zrsheet {
namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kSheetWords = "zrsheet:sheet";
constexpr std::array kPageWords{"drawing",   "both",     "model",     "theme",   "search",   "zoomIn",
                                "zoomOut",   "fit",      "home",      "isolate", "callouts", "view",
                                "list",      "all",      "shown",     "unseen",  "parts",    "none",
                                "item",      "close",    "instances", "noModel", "count",    "itemsOne",
                                "itemsMore", "partsOne", "partsMore"};

Json Cleaned(const std::vector<std::string>& texts) {
    Json cleaned = Json::array();
    for (const std::string& text : texts) cleaned.push_back(CleanText(text));
    return cleaned;
}

Json ItemJson(const SheetItem& item) {
    Json properties = Json::object();
    for (const auto& [name, value] : item.properties) properties[CleanText(name)] = CleanText(value);
    return {{"id", item.itemId},
            {"label", CleanText(item.label)},
            {"quantity", item.quantity},
            {"name", CleanText(item.name)},
            {"tag", CleanText(item.tag)},
            {"level", item.level},
            {"properties", std::move(properties)},
            {"instances", Cleaned(item.instances)}};
}

/// What the page itself says, and the headings that all of the program's lists have.
Json WordsJson(const std::string& language) {
    const auto word = [&language](const char* catalogue, const char* id) {
        return CleanText(du::Localizer(catalogue).LocalizeMessageIn(language, id));
    };
    Json words{{"label", word(kSheetWords, "item")}};
    for (const char* id : {"quantity", "name", "tag"}) words[id] = word(kSheetWords, id);
    for (const char* id : kPageWords) words[id] = word("zrsheet:catalogue", id);
    return words;
}

/// Single precision is plenty about the model's middle, and nowhere else.
dg::DPoint3D MiddleOf(const std::vector<SheetSolid>& solids) {
    dg::FBox box;
    for (const SheetSolid& solid : solids) {
        dg::FBox own;
        if (solid.shape->ComputeDefaultBBox(own)) box.Enclose(own * dg::Location(solid.toWorld));
    }
    if (box.IsEmpty()) return {};
    const auto middle = [](float a, float b) {
        return 0.5 * (static_cast<double>(a) + static_cast<double>(b));
    };
    return {middle(box.min.x, box.max.x), middle(box.min.y, box.max.y), middle(box.min.z, box.max.z)};
}

void Append(std::string& bytes, double value) {
    const auto bits = std::bit_cast<std::uint32_t>(static_cast<float>(value));
    for (unsigned shift = 0; shift < 32; shift += 8) bytes += static_cast<char>((bits >> shift) & 0xFFU);
}

/// Four rows of three columns: the images of the axes and of the origin.
void AppendPlace(std::string& bytes, const dg::DMat44& toWorld, const dg::DPoint3D& middle) {
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 3; ++column)
            Append(bytes, toWorld(row, column) - (row == 3 ? middle[static_cast<int>(column)] : 0.0));
}

Json ShapeJson(const zrg::Shape& shape) {
    const PackedMesh mesh = Pack(shape);
    return {{"low", mesh.low},
            {"size", mesh.size},
            {"positions", mesh.positions},
            {"indices", mesh.indices},
            {"wide", mesh.isWide}};
}

Json PartJson(const SheetSolid& solid, std::size_t shape) {
    Json part{{"id", solid.id}, {"shape", shape}, {"name", CleanText(solid.name)}};
    if (!solid.instance.empty()) part["instance"] = CleanText(solid.instance);
    if (solid.hasItem) part["item"] = solid.itemId;
    if (!solid.color.empty()) part["color"] = solid.color;
    return part;
}

/// Where its leaders end in the model.
Json CalloutJson(const SheetCallout& callout, const dg::DPoint3D& middle) {
    Json json{{"label", CleanText(callout.label)}, {"anchors", Json::array()}};
    if (callout.hasItem) json["item"] = callout.itemId;
    for (const SheetLeader& leader : callout.leaders) {
        const auto [x, y, z] = leader.place;
        json["anchors"].push_back({{"instance", CleanText(leader.instance)},
                                   {"place", {x - middle.x, y - middle.y, z - middle.z}}});
    }
    return json;
}

Json SceneJson(const Sheet& sheet) {
    const dg::DPoint3D middle = MiddleOf(sheet.solids);
    Json shapes = Json::array();
    Json parts = Json::array();
    Json callouts = Json::array();
    std::string places;
    std::map<const zrg::Shape*, std::size_t> numbers;
    for (const SheetSolid& solid : sheet.solids) {
        const auto [at, isNew] = numbers.try_emplace(solid.shape.get(), shapes.size());
        if (isNew) shapes.push_back(ShapeJson(*solid.shape));
        parts.push_back(PartJson(solid, at->second));
        AppendPlace(places, solid.toWorld, middle);
    }
    for (const SheetCallout& callout : sheet.callouts) callouts.push_back(CalloutJson(callout, middle));
    return {{"look", sheet.camera.look}, {"up", sheet.camera.up},    {"shapes", std::move(shapes)},
            {"parts", std::move(parts)}, {"places", Base64(places)}, {"callouts", std::move(callouts)}};
}

}  // namespace

std::string CatalogueData(const Sheet& sheet) {
    Json data{{"title", CleanText(sheet.title)},
              {"words", WordsJson(sheet.language)},
              {"mode", WordOf(sheet.look.mode)},
              {"items", Json::array()}};
    for (const SheetItem& item : sheet.items) data["items"].push_back(ItemJson(item));
    data["scene"] = SceneJson(sheet);
    const std::string json = data.dump(-1, ' ', false, Json::error_handler_t::replace);
    std::string text;
    text.reserve(json.size());
    for (const char c : json) {
        if (c == '<')
            text += "\\u003c";
        else
            text += c;
    }
    return text;
}

}  // namespace zrsheet
