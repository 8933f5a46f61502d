#include "app/export/ReportExporter.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/app/export/SampleSheet.h"

namespace zrsheet::test {
namespace {

// Golden scenes tell all else of a report; none has these.
TEST(ReportExporter, TellsSecondsFaultsAndNumbersThatRoundToZero) {
    Sheet sheet = SampleSheet();
    sheet.quality = {{{zrcallouts::LayoutFaultKind::LabelOffPage, 0, 0}}, 30.0, 20.0, 0.126};
    sheet.callouts[0].leaders[0].end.y = -0.001;
    const auto json = nlohmann::ordered_json::parse(ReportText(sheet));
    EXPECT_EQ(json["callouts"][0]["leaders"][0]["end"].dump(), "[50.0,0.0]");
    EXPECT_EQ(json["quality"]["faults"].dump(), R"([{"kind":"label-off-page","callout":"callout-1"}])");
    EXPECT_EQ(json["quality"]["ratio"], 1.5);
    EXPECT_EQ(json["seconds"].dump(), R"({"load":0.13,"create":1.0,"pick":0.0,"render":2.5,"write":0.0})");
}

}  // namespace
}  // namespace zrsheet::test
