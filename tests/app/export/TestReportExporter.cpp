#include "app/export/ReportExporter.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/app/export/SampleSheet.h"
#include "tests/app/file/TemporaryFolder.h"

namespace zrsheet::test {
namespace {

TEST(ReportExporter, TellsPlacesInPagePixelsRoundedToHundredths) {
    Sheet sheet = SampleSheet();
    sheet.callouts.resize(1);
    sheet.items.resize(1);
    sheet.quality = {{{zrcallouts::LayoutFaultKind::LabelOffPage, 0, 0}}, 30.0, 20.0, 0.126};
    sheet.callouts[0].leaders[0].end.y = -0.001;
    const TemporaryFolder folder;
    ExportReport(sheet, folder / "report.json");
    const auto json = nlohmann::ordered_json::parse(ReadFile(folder / "report.json"));
    EXPECT_EQ(
        json.dump(),
        R"({"schema":1,"page":{"width":400.0,"height":200.0},)"
        R"("model":{"box":[105.0,45.0,195.0,155.0],"parts":2,"instances":5,"triangles":1234},)"
        R"("callouts":[{"id":"callout-1","itemId":1,"label":"1","box":[20.0,20.0,50.0,50.0],)"
        R"("style":{"shape":"round","fontSize":13.0,"lineWidth":1.25},)"
        R"("leaders":[{"anchor":[120.46,90.0],"end":[50.0,0.0],"instance":"root/pump","visible":true,)"
        R"("terminator":"dot"}]}],)"
        R"("insets":[{"id":"inset-1","centre":[200.0,130.0],"radius":20.0,)"
        R"("source":{"centre":[130.0,145.0],"radius":5.0},"factor":4.0}],)"
        R"("items":[{"itemId":1,"label":"1","quantity":1,"name":"Pump housing","instances":["root/pump"]}],)"
        R"("quality":{"faults":[{"kind":"label-off-page","callout":"callout-1"}],"complete":true,"leaderLength":30.0,)"
        R"("shortestLength":20.0,"ratio":1.5,"meanDisplacement":0.13,"counts":{"labels-overlap":0,)"
        R"("leaders-cross":0,"leader-meets-label":0,"label-off-page":1,"label-on-model":0}},)"
        R"("seconds":{"load":0.13,"create":1.0,"pick":0.0,"render":2.5,"write":0.0}})");
}

}  // namespace
}  // namespace zrsheet::test
