#include "app/export/XmlExporter.h"

#include <fmt/format.h>

#include <array>
#include <cstddef>
#include <map>
#include <pugixml.hpp>
#include <sstream>
#include <string_view>
#include <vector>

#include "app/export/SheetIds.h"
#include "app/render/CleanText.h"

namespace zrsheet {
namespace {

using Node = pugi::xml_node;

constexpr const char* kFigureId = "fig-0001";
constexpr const char* kHotspotTarget = "irtt11";  // what a reference to a hotspot is called
/// How files call the number of a part, the likeliest first.
constexpr std::array<std::string_view, 4> kNumberNames{"PartNumber", "Part Number", "PART_NUMBER",
                                                       "part_number"};

void Set(Node node, const char* name, const std::string& value) {
    node.append_attribute(name) = CleanText(value).c_str();
}

void AddText(Node parent, const char* name, const std::string& text) {
    parent.append_child(name).text().set(CleanText(text).c_str());
}

std::string PartNumberOf(const SheetItem& item) {
    for (const std::string_view name : kNumberNames) {
        const auto found = item.properties.find(std::string(name));
        if (found != item.properties.end()) return found->second;
    }
    return {};
}

/// Which hotspots show an item's parts: the ids of their elements here.
using ItemSpots = std::map<unsigned, std::vector<std::string>>;

/// Tells about the areas of the picture and of the glasses over it, counting them through.
class HotspotList {
public:
    explicit HotspotList(Node picture) : m_picture(picture) {}

    /// `ids` are those in the drawing.
    void Add(const std::vector<SheetHotspot>& hotspots, const std::vector<std::string>& ids) {
        for (std::size_t i = 0; i < hotspots.size(); ++i) {
            const SheetHotspot& spot = hotspots[i];
            const std::string id = fmt::format("hot-{:04}", ++m_count);
            Node node = m_picture.append_child("hotspot");
            Set(node, "id", id);
            Set(node, "applicationStructureIdent", ids[i]);
            if (!spot.label.empty()) Set(node, "applicationStructureName", spot.label);
            Set(node, "hotspotTitle", spot.name);
            if (spot.hasItem) m_spots[spot.itemId].push_back(id);
        }
    }

    const ItemSpots& Spots() const { return m_spots; }

private:
    Node m_picture;
    std::size_t m_count = 0;
    ItemSpots m_spots;
};

ItemSpots AddFigure(Node parent, const Sheet& sheet, const std::string& graphic) {
    Node figure = parent.append_child("figure");
    Set(figure, "id", kFigureId);
    AddText(figure, "title", sheet.title);
    Node picture = figure.append_child("graphic");
    Set(picture, "id", "gra-0001");
    Set(picture, "infoEntityIdent", graphic);
    const SheetIds ids = IdsOf(sheet);
    HotspotList list(picture);
    list.Add(sheet.hotspots, ids.hotspots);
    for (std::size_t i = 0; i < sheet.insets.size(); ++i)
        list.Add(sheet.insets[i].hotspots, ids.insets[i].hotspots);
    return list.Spots();
}

void AddItem(Node parent, const SheetItem& item, std::size_t place, const std::vector<std::string>& spots) {
    Node number = parent.append_child("catalogSeqNumber");
    Set(number, "id", fmt::format("csn-{:04}", place));
    Set(number, "figureNumber", "01");
    Set(number, "item", fmt::format("{:03}", place));
    Set(number, "indenture", std::to_string(item.level + 1));
    Node sequence = number.append_child("itemSeqNumber");
    Set(sequence, "itemSeqNumberValue", "00A");
    AddText(sequence, "quantityPerNextHigherAssy", std::to_string(item.quantity));
    if (const std::string part = PartNumberOf(item); !part.empty())
        Set(sequence.append_child("partRef"), "partNumberValue", part);
    Node data = sequence.append_child("partSegment").append_child("itemIdentData");
    AddText(data, "descrForPart", item.name);
    Node callout = sequence.append_child("partLocationSegment");
    if (!item.label.empty()) AddText(callout, "callout", item.label);
    if (!item.tag.empty()) AddText(callout, "referenceDesignator", item.tag);
    for (const std::string& spot : spots) {
        Node reference = callout.append_child("internalRef");
        Set(reference, "internalRefId", spot);
        Set(reference, "internalRefTargetType", kHotspotTarget);
    }
}

}  // namespace

std::string XmlText(const Sheet& sheet, const std::string& graphic) {
    pugi::xml_document document;
    Node declaration = document.append_child(pugi::node_declaration);
    Set(declaration, "version", "1.0");
    Set(declaration, "encoding", "UTF-8");
    Node catalog = document.append_child("illustratedPartsCatalog");
    if (!sheet.language.empty()) Set(catalog, "xml:lang", sheet.language);
    const ItemSpots spots = AddFigure(catalog, sheet, graphic);
    std::size_t place = 0;
    for (const SheetItem& item : sheet.items) {
        const auto found = spots.find(item.itemId);
        AddItem(catalog, item, ++place, found != spots.end() ? found->second : std::vector<std::string>());
    }
    std::ostringstream text;
    document.save(text, "  ", pugi::format_default, pugi::encoding_utf8);
    return text.str();
}

}  // namespace zrsheet
