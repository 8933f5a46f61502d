#include "tests/app/export/SampleSheet.h"

namespace zrsheet::test {
namespace {

SheetCallout Pump() {
    return {"callout-1",  true, 1, "1", {20, 20, 50, 50}, {{{120.456, 90}, {50, 35}, "root/pump", true}},
            {"root/pump"}};
}

SheetCallout Screws() {
    return {"callout-2",
            true,
            2,
            "2 (4x)",
            {20, 100, 90, 130},
            {{{150, 100}, {90, 115}, "root/screw 1", true},
             {{160, 140}, {90, 116}, "root/screw 2", false, "#808080"}},
            {"root/screw 1", "root/screw 2", "root/screw 3"}};
}

/// Half over the picture, half beside it.
SheetInset Glass() {
    return {"inset-1",
            {{200, 130}, 20},
            {{130, 145}, 5},
            4.0,
            {180, 110, 220, 150},
            {40, 40, std::vector<std::uint8_t>(40 * 40 * 3, 120)},
            {},
            {}};
}

}  // namespace

Sheet SampleSheet() {
    Sheet sheet;
    sheet.width = 400;
    sheet.height = 200;
    sheet.title = "Pump";
    sheet.titlePlace = {10, 15};
    sheet.language = "en";
    sheet.figure = {100, 40, 200, 160};
    sheet.picture = {50, 60, std::vector<std::uint8_t>(50 * 60 * 3, 200)};
    sheet.model = {"pump", {105, 45, 195, 155}, 2, 5, 1234};
    sheet.insets = {Glass()};
    sheet.callouts = {Pump(), Screws()};
    sheet.items = {{1, "1", 1, "Pump housing", "T-7", 0, {{"Material", "Cast iron"}}, {"root/pump"}},
                   {2, "2", 4, "Screw", "", 1, {{"Mass", "0.2"}}, {"root/screw 1", "root/screw 2"}}};
    sheet.tables = {{{220, 20, 380, 80},
                     20,
                     {{"Item", 60, true}, {"Name", 100, false}},
                     {{{"1", 0}, {"Pump housing", 0}}, {{"2", 0}, {"Screw", 8}}}}};
    sheet.seconds = {0.126, 1, 0, 2.5, 0};
    return sheet;
}

}  // namespace zrsheet::test
