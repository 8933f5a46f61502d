#include "app/export/XmlExporter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <pugixml.hpp>
#include <set>

#include "app/export/ExportSheet.h"
#include "app/export/SvgExporter.h"
#include "tests/app/export/SampleSheet.h"
#include "tests/app/file/TemporaryFolder.h"

namespace zrsheet::test {
namespace {

using Names = std::multiset<std::string>;

/// Two parts of one item, one of another, and a symbol whose name is no id and is there twice. Two glasses of
/// the same id show one of the parts again.
Sheet SheetWithHotspots() {
    Sheet sheet = SampleSheet();
    const std::vector<std::vector<ArtPoint>> ring{{{0, 0}, {9, 0}, {9, 9}}};
    sheet.hotspots = {{"part-2-1", true, 2, "2", "Screw", "root/screw 1", ring},
                      {"part-1-1", true, 1, "1", "Pump housing", "root/pump", ring},
                      {"part-2-2", true, 2, "2", "Screw", "root/screw 2", ring},
                      {"ground", false, 0, "", "ground", "", ring},
                      {"an arrow", false, 0, "", "an arrow", "", ring},
                      {"an arrow", false, 0, "", "an arrow", "", ring}};
    sheet.insets.push_back(sheet.insets[0]);
    for (SheetInset& inset : sheet.insets)
        inset.hotspots = {{"part-2-2", true, 2, "2", "Screw", "root/screw 2", ring}};
    sheet.items[0].properties["PartNumber"] = "P-100";
    return sheet;
}

Names ValuesOf(const pugi::xml_document& document, const char* path) {
    Names names;
    for (const auto& each : document.select_nodes(path)) names.insert(each.attribute().value());
    return names;
}

TEST(XmlExporter, NamesTheAreasAsTheSvgDoes) {
    Sheet sheet = SheetWithHotspots();
    sheet.look.mode = PictureMode::Line;
    for (const char* ground : {"#ffffff", "#dbe7f5"}) {
        sheet.ground.top = ground;
        pugi::xml_document svg;
        ASSERT_TRUE(svg.load_string(SvgText(sheet).c_str()));
        pugi::xml_document xml;
        ASSERT_TRUE(xml.load_string(XmlText(sheet, "a.svg").c_str()));
        const Names drawn = ValuesOf(svg, "//path[@class='hotspot']/@id");
        EXPECT_EQ(drawn.size(), 8U);
        const Names all = ValuesOf(svg, "//@id");
        EXPECT_EQ(std::set<std::string>(all.begin(), all.end()).size(), all.size()) << ground;
        EXPECT_EQ(ValuesOf(xml, "//hotspot/@applicationStructureIdent"), drawn);
    }
}

TEST(XmlExporter, LeadsFromEachItemToItsAreas) {
    pugi::xml_document xml;
    ASSERT_TRUE(xml.load_string(XmlText(SheetWithHotspots(), "a.svg").c_str()));
    const auto root = xml.child("illustratedPartsCatalog");
    std::map<std::string, std::string> areas;
    for (const auto spot : root.select_nodes("figure/graphic/hotspot"))
        areas[spot.node().attribute("id").value()] =
            spot.node().attribute("applicationStructureIdent").value();
    std::string told;
    for (const auto item : root.children("catalogSeqNumber")) {
        const auto sequence = item.child("itemSeqNumber");
        told.append(item.attribute("item").value()).append("/").append(item.attribute("indenture").value());
        told.append(" ").append(sequence.child_value("quantityPerNextHigherAssy"));
        told.append(" ").append(sequence.child("partRef").attribute("partNumberValue").value());
        told.append(" ").append(
            sequence.child("partSegment").child("itemIdentData").child_value("descrForPart"));
        for (const auto reference : sequence.child("partLocationSegment").children("internalRef"))
            told.append(" ").append(areas.at(reference.attribute("internalRefId").value()));
        told += "\n";
    }
    EXPECT_EQ(told,
              "001/1 1 P-100 Pump housing part-1-1\n"
              "002/2 4  Screw part-2-1 part-2-2 inset-1-part-2-2 inset-1-2-part-2-2\n");
}

TEST(XmlExporter, RefersToTheSvgOfTheSameRun) {
    const TemporaryFolder folder;
    const Sheet sheet = SampleSheet();
    const auto graphic = [&folder](const char* file) {
        pugi::xml_document xml;
        xml.load_string(ReadFile(folder / file).c_str());
        return std::string(xml.select_node("//graphic/@infoEntityIdent").attribute().value());
    };
    ExportSheets({{sheet, folder / "a.xml"}, {sheet, folder / "b & c.SVG"}});
    EXPECT_EQ(graphic("a.xml"), "b & c.SVG");
    ExportSheet(sheet, folder / "d.xml");
    EXPECT_EQ(graphic("d.xml"), "d.svg");
}

}  // namespace
}  // namespace zrsheet::test
