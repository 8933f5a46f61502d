#include "app/catalogue/CatalogueHtml.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "app/export/SvgExporter.h"
#include "app/file/Base64.h"
#include "tests/app/export/SampleSheet.h"

namespace zrsheet {
namespace {

using Json = nlohmann::json;

du::SmartPtr<zrg::Shape> Triangle(float size) {
    return du::SmartPtr<zrg::Shape>(new zrg::Shape({0, 0, 0, size, 0, 0, 0, size, 0}, {0, 1, 2}));
}

SheetSolid Solid(const std::string& id, const du::SmartPtr<zrg::Shape>& shape, double x) {
    SheetSolid solid;
    solid.id = id;
    solid.shape = shape;
    solid.toWorld(3, 0) = x;
    return solid;
}

/// The sheet of the other exporters with three parts of two shapes, far from the origin.
Sheet SheetWithSolids() {
    Sheet sheet = test::SampleSheet();
    const auto shape = Triangle(1);
    sheet.solids = {Solid("part-1-1", shape, 1e6), Solid("part-1-2", shape, 1e6 + 2),
                    Solid("part-2-1", Triangle(2), 1e6)};
    sheet.callouts.front().leaders.front().place = {1e6 + 2, 0, 0};
    return sheet;
}

std::string HtmlOf(const Sheet& sheet) { return CatalogueHtml(sheet, SvgText(sheet)); }

/// What the page's script is told.
Json DataOf(const std::string& html) {
    const std::string opening = R"(<script type="application/json" id="data">)";
    const std::size_t start = html.find(opening) + opening.size();
    return Json::parse(html.substr(start, html.find("</script>", start) - start));
}

TEST(CatalogueHtml, HasEachShapeOnceAndAPlaceForEachPart) {
    const Json scene = DataOf(HtmlOf(SheetWithSolids()))["scene"];
    EXPECT_EQ(scene["shapes"].size(), 2U);
    EXPECT_EQ(scene["parts"][0]["shape"], scene["parts"][1]["shape"]);
    EXPECT_NE(scene["parts"][0]["shape"], scene["parts"][2]["shape"]);
    EXPECT_EQ(scene["places"].get<std::string>().size(), 3U * 12U * 4U / 3U * 4U);
}

// Single precision cannot tell parts apart a million units away.
TEST(CatalogueHtml, CountsPlacesFromTheMiddleOfTheModel) {
    const Json scene = DataOf(HtmlOf(SheetWithSolids()))["scene"];
    const double x = scene["callouts"][0]["anchors"][0]["place"][0];
    EXPECT_NEAR(x, 0.5, 1e-6);
    const std::string origin("\0\0\xC0\xBF\0\0\x80\xBF\0\0\0\0", 12);  // -1.5, -1, 0
    EXPECT_EQ(scene["places"].get<std::string>().substr(48, 16), Base64(origin));
}

TEST(CatalogueHtml, IsTheSameEachTimeAndAsksForNothingElse) {
    const std::string html = HtmlOf(SheetWithSolids());
    EXPECT_EQ(html, HtmlOf(SheetWithSolids()));
    for (const char* absent : {"<link", " src=", "<?xml", "{{"})
        EXPECT_EQ(html.find(absent), std::string::npos) << absent;
}

}  // namespace
}  // namespace zrsheet
