// The parts list as CSV and as JSON.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "app/export/CsvExporter.h"
#include "app/export/JsonExporter.h"
#include "app/render/CleanText.h"
#include "tests/app/export/SampleSheet.h"

namespace zrsheet::test {
namespace {

using ::testing::StartsWith;

TEST(CsvExporter, QuotesWhatWouldBreakARecord) {
    Sheet sheet;
    sheet.items = {
        {7, "7,a", -1, "1/2\" valve", "two\r\nlines", 0, {{"a,b", "1+1"}, {"\u9600", "a\nb"}}, {}}};
    EXPECT_EQ(CsvText(sheet),
              "Item,Quantity,Name,Tag,\"a,b\",\u9600\r\n"
              "\"7,a\",-1,\"1/2\"\" valve\",two  lines,1+1,a b\r\n");
}

// Whatever spreadsheets run as a formula, in whichever column, the head included.
TEST(CsvExporter, LetsNoTextBeAFormula) {
    for (const std::string start : {"=", "+", "-", "@", "\t=", "\r\n@", "\x01=", " -", "\uFF1D", "\uFF20"}) {
        const std::string text = start + "cmd";
        Sheet sheet;
        sheet.items = {{1, text, 1, text, text, 0, {{text, text}}, {}}};
        const std::string tamed = "'" + CleanText(text);
        EXPECT_EQ(CsvText(sheet), "Item,Quantity,Name,Tag," + tamed + "\r\n" + tamed + ",1," + tamed + "," +
                                      tamed + "," + tamed + "\r\n");
    }
}

TEST(ListExporters, WriteTheColumnsThatTheAuthorChose) {
    Sheet sheet = SampleSheet();
    EXPECT_THAT(CsvText(sheet), StartsWith("Item,Quantity,Level,Name,Tag,Mass,Material\r\n1,1,0,Pump"));
    sheet.listColumns = {"property:Material", "level", "item", "property:Absent"};
    EXPECT_EQ(CsvText(sheet), "Material,Level,Item,Absent\r\nCast iron,0,1,\r\n,1,2,\r\n");
    EXPECT_EQ(nlohmann::ordered_json::parse(JsonText(sheet))["items"][0].dump(),
              R"({"itemId":1,"properties":{"Material":"Cast iron","Absent":""},"level":0,"label":"1"})");
}

TEST(JsonExporter, HoldsTheItemsInOrder) {
    const auto json = nlohmann::ordered_json::parse(JsonText(SampleSheet()));
    EXPECT_EQ(json.dump(),
              R"({"schema":1,"title":"Pump","language":"en","items":[)"
              R"({"itemId":1,"label":"1","quantity":1,"name":"Pump housing","tag":"T-7","level":0,)"
              R"("properties":{"Material":"Cast iron"},"instances":["root/pump"]},)"
              R"({"itemId":2,"label":"2","quantity":4,"name":"Screw","tag":"","level":1,)"
              R"("properties":{"Mass":"0.2"},"instances":["root/screw 1","root/screw 2"]}]})");
}

}  // namespace
}  // namespace zrsheet::test
