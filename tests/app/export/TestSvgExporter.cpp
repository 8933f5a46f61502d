#include "app/export/SvgExporter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <pugixml.hpp>
#include <set>
#include <vector>

#include "app/render/TextMetrics.h"
#include "tests/app/export/SampleSheet.h"

namespace zrsheet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::MatchesRegex;

/// An SVG read back.
class ReadSvg {
public:
    explicit ReadSvg(const Sheet& sheet) { m_document.load_string(SvgText(sheet).c_str()); }

    pugi::xml_node Find(const char* path) const { return m_document.select_node(path).node(); }
    std::vector<std::string> All(const char* path) const {
        std::vector<std::string> values;
        for (const auto& found : m_document.select_nodes(path)) {
            values.emplace_back(found.attribute() ? found.attribute().value() : found.node().text().get());
        }
        return values;
    }

private:
    pugi::xml_document m_document;
};

TEST(SvgExporter, GroupsEachCalloutWithItsLeadersAndItsLabel) {
    const ReadSvg svg(SampleSheet());
    EXPECT_THAT(svg.All("//g[@class='callout']/@id"), ElementsAre("callout-1", "callout-2"));
    EXPECT_THAT(svg.All("//g[@class='callout']/@data-item"), ElementsAre("1", "2"));
    EXPECT_THAT(svg.All("//g[@class='callout']/@data-instances"),
                ElementsAre("root/pump", "root/screw 1|root/screw 2|root/screw 3"));
    EXPECT_EQ(svg.All("//g[@id='callout-2']/g[@class='leader']").size(), 2U);
    EXPECT_THAT(svg.All("//g[@class='callout']/g[@class='label']/text"), ElementsAre("1", "2 (4x)"));
    EXPECT_TRUE(svg.Find("//g[@id='callout-1']/g[@class='label']/circle"));
    EXPECT_EQ(svg.Find("//g[@id='callout-2']/g[@class='label']/rect").attribute("rx").as_double(), 15.0);
}

// A covered part is pointed at in another way, and the line must still read over the model's dark edges.
TEST(SvgExporter, DrawsLeadersOverAWhiteHaloAndCoveredOnesDashedAndDim) {
    const SheetStyle style;
    const ReadSvg svg(SampleSheet());
    EXPECT_THAT(svg.All("//g[@id='callout-2']/g[@class='leader']/line/@stroke"),
                ElementsAre("#ffffff", style.inkColor, "#ffffff", "#808080"));
    EXPECT_THAT(svg.All("//g[@id='callout-2']/g[@class='leader']/circle/@fill"),
                ElementsAre("#ffffff", style.inkColor, "#ffffff", "#808080"));
    EXPECT_EQ(svg.All("//line[@stroke-dasharray]").size(), 1U);
    const pugi::xml_node line = svg.Find("//g[@id='callout-1']//line[2]");
    EXPECT_EQ(line.attribute("x2").as_string(), std::string("120.46"));
    EXPECT_GT(svg.Find("//g[@id='callout-1']//line[1]").attribute("stroke-width").as_double(),
              style.leaderWidth + 1);
}

TEST(SvgExporter, DrawsEveryShapeOfBalloonAndEndOfLeader) {
    using zrannotations::BalloonShape;
    using zrannotations::Terminator;
    const struct {
        BalloonShape shape;
        std::vector<std::string> label;
        Terminator end;
        std::vector<std::string> leader;
    } rows[] = {
        {BalloonShape::Round,
         {"circle", "text", "text"},
         Terminator::Dot,
         {"line", "circle", "line", "circle"}},
        {BalloonShape::Split, {"circle", "line", "text", "text"}, Terminator::None, {"line", "line"}},
        {BalloonShape::Box,
         {"polygon", "text", "text"},
         Terminator::Arrow,
         {"line", "polygon", "line", "polygon"}},
        {BalloonShape::Hexagon, {"polygon", "text", "text"}, Terminator::None, {"line", "line"}},
        {BalloonShape::None, {"line", "text", "text"}, Terminator::None, {"line", "line"}},
    };
    for (const auto& row : rows) {
        Sheet sheet = SampleSheet();
        sheet.callouts.resize(1);
        sheet.callouts[0].label = "1\n2x";
        sheet.callouts[0].look.shape = row.shape;
        sheet.callouts[0].look.lineWidth = 2.5;
        sheet.callouts[0].leaders[0].terminator = row.end;
        const ReadSvg svg(sheet);
        const auto names = [&](const char* path) {
            std::vector<std::string> found;
            for (const auto& node : svg.Find(path).children()) found.emplace_back(node.name());
            return found;
        };
        EXPECT_EQ(names("//g[@class='label']"), row.label);
        EXPECT_EQ(names("//g[@class='leader']"), row.leader);
        EXPECT_THAT(svg.All("//g[@class='label']/text"), ElementsAre("1", "2x"));
        EXPECT_EQ(svg.Find("//g[@class='label']/*[1]").attribute("stroke-width").as_double(), 2.5);
        EXPECT_EQ(svg.Find("//g[@class='leader']/line[2]").attribute("stroke-width").as_double(), 2.0);
    }
}

double Value(const pugi::xml_node& node, const char* name) { return node.attribute(name).as_double(); }

/// Does the line end on the circle, and touch it there?
void ExpectTangent(const pugi::xml_node& line, const char* x, const char* y, const SheetCircle& circle) {
    const double outX = Value(line, x) - circle.centre.x;
    const double outY = Value(line, y) - circle.centre.y;
    EXPECT_NEAR(std::hypot(outX, outY), circle.radius, 0.01);
    const double dx = Value(line, "x2") - Value(line, "x1");
    const double dy = Value(line, "y2") - Value(line, "y1");
    EXPECT_NEAR((outX * dx + outY * dy) / circle.radius / std::hypot(dx, dy), 0.0, 0.01);
}

// The glass lies over the picture and below the leaders that end in it; nothing of it shows outside its rim.
TEST(SvgExporter, DrawsAGlassCutToItsCircleAndTiedToItsSource) {
    Sheet sheet = SampleSheet();
    const SheetInset inset = sheet.insets[0];
    const ReadSvg svg(sheet);
    const pugi::xml_node group = svg.Find("/svg/g[@id='inset-1' and @class='inset']");
    EXPECT_EQ(svg.Find("/svg/image[@class='picture']/following-sibling::g[@class='inset']"), group);
    EXPECT_EQ(svg.Find("/svg/g[@class='callouts']/preceding-sibling::g[@class='inset']"), group);
    const std::string clip =
        svg.Find("//g[@id='inset-1']/g[starts-with(@class,'view')]").attribute("clip-path").value();
    EXPECT_EQ(clip, "url(#" + svg.All("//clipPath/@id").at(0) + ")");
    EXPECT_EQ(Value(svg.Find("//clipPath/circle"), "r"), inset.glass.radius);
    EXPECT_EQ(svg.All("//g[@id='inset-1']/line").size(), 4U) << "a white and a black one on both sides";
    for (const auto& line : group.children("line")) {
        ExpectTangent(line, "x1", "y1", inset.source);
        ExpectTangent(line, "x2", "y2", inset.glass);
    }
    sheet.insets[0].source.centre = {199, 131};
    EXPECT_TRUE(ReadSvg(sheet).All("//g[@id='inset-1']/line").empty()) << "a glass over its own source";
}

// Nothing but vectors, and nothing about their looks that a stylesheet could not change.
TEST(SvgExporter, DrawsLinesAndHotspotsThatAnyStylesheetCanChange) {
    Sheet sheet = SampleSheet();
    sheet.picture = {};
    sheet.lines = {{LineKind::Hidden, 1, {{1, 1}, {9, 1}}, false},
                   {LineKind::Outline, 0, {{10, 10}, {30, 10}, {30, 25.5}}, true},
                   {LineKind::Outline, 0, {{5, 5}, {4, 7}}, false}};
    sheet.insets[0].picture = {};
    sheet.insets[0].lines = {{LineKind::Edge, 0, {{0, 0}, {40, 40}}, false}};
    sheet.insets[0].hotspots = {{"part-1-1", true, 1, "1", "Pump", "/Pump", {{{0, 0}, {9, 0}, {9, 9}}}}};
    sheet.hotspots = {{"part-1-1", true, 1, "1", "<Pump> & Co", "/Pump", {{{10, 10}, {30, 10}, {30, 25}}}},
                      {"a b", false, 0, "", "arrow", "", {{{0, 0}, {1, 0}, {1, 1}}}}};
    const ReadSvg svg(sheet);
    EXPECT_TRUE(svg.All("//image/@x").empty());
    const std::string lines = "/svg/g[@class='model line']/g[@class='model-lines']";
    EXPECT_THAT(svg.All((lines + "/path/@class").c_str()), ElementsAre("hidden fine-1", "outline"));
    EXPECT_THAT(svg.All((lines + "/path/@d").c_str()),
                ElementsAre("m1 1 8 0", "m10 10 20 0 0 15.5zm-5-5-1 2"));
    EXPECT_EQ(svg.All((lines + "/@transform").c_str()).at(0), "translate(100 40)");
    EXPECT_THAT(svg.All("//g[@class='hotspots']/path/@id"),
                ElementsAre("part-1-1", "a_b", "inset-1-part-1-1"));
    EXPECT_THAT(svg.All("//path[@id='part-1-1']/@*"),
                ElementsAre("hotspot", "m10 10 20 0 0 15z", "part-1-1", "1", "1", "<Pump> & Co", "/Pump"));
    EXPECT_THAT(svg.All("//path/title"), ElementsAre("1  <Pump> & Co", "arrow", "1  Pump"));
    EXPECT_EQ(svg.All("//g[@class='view line']/g[@class='hotspots']/@transform").at(0), "translate(180 110)");
    EXPECT_EQ(svg.All("//g[starts-with(@class,'view')]/g[@class='model-lines']/path/@d").at(0), "m0 0 40 40");
    EXPECT_TRUE(svg.All("//style | //@style").empty()) << "these would win over some rules of a page";
    EXPECT_THAT(svg.All("//g[@class='model-lines']/path/@stroke-width"), ElementsAre("0.71", "1.89", "0.94"));
    EXPECT_EQ(svg.All("//path/@stroke-dasharray").size(), 1U);
    EXPECT_TRUE(svg.All("//g[@class='hotspots']/@fill-opacity").empty());
    sheet.look.mode = PictureMode::Both;
    EXPECT_THAT(ReadSvg(sheet).All("//g[@class='hotspots']/@fill-opacity"), ElementsAre("0", "0"));
}

// A coloured ground is vectors too; white needs none.
TEST(SvgExporter, LaysLinesOnTheGroundOfThePicture) {
    Sheet sheet = SampleSheet();
    EXPECT_FALSE(ReadSvg(sheet).Find("//rect[@class='ground']"));
    sheet.ground = {"#ffffff", "#102030"};
    const ReadSvg svg(sheet);
    EXPECT_EQ(svg.All("//rect[@class='ground']/@fill").at(0), "url(#ground)");
    EXPECT_THAT(svg.All("//linearGradient[@id='ground']/stop/@stop-color"),
                ElementsAre("#ffffff", "#102030"));
}

// A long parts list stands in several columns beside each other.
TEST(SvgExporter, DrawsEveryTableOfAList) {
    Sheet sheet = SampleSheet();
    sheet.tables.push_back(sheet.tables[0]);
    sheet.tables[1].box.x0 += 1000;
    EXPECT_THAT(ReadSvg(sheet).All("//g[@class='parts-list']/text[@x > 1000]"),
                ElementsAre("Item", "Name", "1", "Pump housing", "2", "Screw"));
}

TEST(SvgExporter, GivesLegalIdsOfWhichNoTwoAreAlike) {
    Sheet sheet = SampleSheet();
    for (const char* id : {"a b", "a_b", "callout-1", "\u9600<", ""}) {
        sheet.callouts.push_back(sheet.callouts[0]);
        sheet.callouts.back().id = id;
    }
    for (const char* id : {"inset-1", "inset-1-clip", "a b"}) {
        sheet.insets.push_back(sheet.insets[0]);
        sheet.insets.back().id = id;
    }
    const std::vector<std::string> ids = ReadSvg(sheet).All("//@id");
    EXPECT_EQ(ids.size(), sheet.callouts.size() + 2 * sheet.insets.size()) << "a glass has a clip path";
    EXPECT_EQ(std::set<std::string>(ids.begin(), ids.end()).size(), ids.size());
    for (const std::string& id : ids) EXPECT_THAT(id, MatchesRegex("(callout|inset)-[-_.A-Za-z0-9]*"));
}

// Zones are parted from each other, not from the corners, where only the border runs on.
TEST(SvgExporter, NamesTheZonesBesideTheFrame) {
    Sheet sheet = SampleSheet();
    sheet.frame = SheetFrame{{20, 20, 380, 180},
                             {},
                             {20, 10, 390, 180},
                             {{{20, 10, 200, 20}, "1"},
                              {{200, 10, 380, 20}, "2"},
                              {{380, 20, 390, 100}, "A"},
                              {{380, 100, 390, 180}, "B"}}};
    const ReadSvg svg(sheet);
    std::string names;
    for (const std::string& name : svg.All("//g[@class='frame']/text/text()")) names += name;
    EXPECT_EQ(names, "12AB");
    const auto ticks = [&svg](const std::string& box) {
        return svg.All(("//g[@class='frame']/line" + box).c_str()).size();
    };
    EXPECT_EQ(ticks("[@x1='200' and @x2='200' and @y2='20']"), 1U + 1U) << "and the centring mark";
    EXPECT_EQ(ticks("[@y1='100' and @y2='100' and @x1='380']"), 1U + 1U);
    EXPECT_EQ(ticks("[@x1='20' and @x2='20' and @y1='10' and @y2='20']"), 0U);
}

}  // namespace
}  // namespace zrsheet::test
