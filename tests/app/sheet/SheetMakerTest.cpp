#include "app/sheet/SheetMaker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "app/document/UserError.h"
#include "app/export/JsonExporter.h"
#include "app/export/ReportExporter.h"
#include "app/export/SvgExporter.h"
#include "app/sheet/PageLayout.h"
#include "app/sheet/SheetQuality.h"
#include "tests/app/document/ModelFiles.h"

namespace zrsheet {
namespace {

/// All that outputs tell, and lines to their last bit.
void ExpectSame(Sheet one, Sheet other) {
    one.seconds = other.seconds = {};
    EXPECT_TRUE(one.lines == other.lines);
    EXPECT_TRUE(SvgText(one) == SvgText(other));
    EXPECT_TRUE(JsonText(one) == JsonText(other));
    EXPECT_TRUE(ReportText(one) == ReportText(other));
}

SheetOptions Small(const std::string& view, LeaderChoice leaders, bool isHierarchical, unsigned threads) {
    SheetOptions options;
    options.width = kLeastWidth;  // drawing takes longest by far
    options.height = kLeastHeight;
    options.view = ParseViewDirection(view);
    options.leaders = leaders;
    options.numbering.hierarchical = isHierarchical;
    options.threads = threads;
    return options;
}

Sheet Make(const Assembly& assembly, const SheetOptions& options) {
    return MakeSheet(assembly, options, [](std::string_view, int) {});
}

// Pools, pointers and hash tables differ from run to run; the sheet must not.
TEST(SheetMaker, MakesTheSameSheetWhateverTheThreads) {
    for (const LeaderChoice leaders : {LeaderChoice::One, LeaderChoice::All, LeaderChoice::PerInstance}) {
        const bool isHierarchical = leaders != LeaderChoice::One;
        ExpectSame(Make(SampleAssembly(), Small("iso", leaders, isHierarchical, 1)),
                   Make(SampleAssembly(), Small("iso", leaders, isHierarchical, 4)));
    }
}

TEST(SheetMaker, MakesTheSameSheetOfModelsByOthers) {
    const auto files = ModelsByOthers();
    if (files.empty()) GTEST_SKIP() << "no folder of models; set ZR_MODELS";
    for (const auto& file : files) {
        const Sheet one = Make(ImportedModel(file), Small("iso", LeaderChoice::One, true, 1));
        SCOPED_TRACE(file);
        ExpectSame(one, Make(ImportedModel(file), Small("iso", LeaderChoice::One, true, 4)));
        EXPECT_EQ(FaultNotices(one), std::vector<std::string>{});
    }
}

bool IsInside(const PageBox& box, const Sheet& sheet) {
    return box.x0 >= 0 && box.y0 >= 0 && box.x1 <= sheet.width && box.y1 <= sheet.height;
}

bool Overlap(const PageBox& a, const PageBox& b) {
    return a.x0 < b.x1 && b.x0 < a.x1 && a.y0 < b.y1 && b.y0 < a.y1;
}

/// The line starts on the balloon's rim, whose ends are half circles, straight towards the anchor; a balloon
/// that covers its anchor has no line.
void ExpectEndOnRim(const SheetCallout& callout, const SheetLeader& leader) {
    const double radius = 0.5 * (callout.box.y1 - callout.box.y0);
    const double coreX = std::clamp(leader.anchor.x, callout.box.x0 + radius, callout.box.x1 - radius);
    const double coreY = 0.5 * (callout.box.y0 + callout.box.y1);
    const double toAnchor = std::hypot(leader.anchor.x - coreX, leader.anchor.y - coreY);
    const double toEnd = std::hypot(leader.end.x - coreX, leader.end.y - coreY);
    EXPECT_NEAR(toEnd, std::min(radius, toAnchor), 1e-6);
    EXPECT_NEAR(toEnd + std::hypot(leader.anchor.x - leader.end.x, leader.anchor.y - leader.end.y), toAnchor,
                1e-6);
}

/// Nothing leaves the page, and no balloon covers another, a table or the model.
void ExpectTidy(const Sheet& sheet) {
    EXPECT_TRUE(IsInside(sheet.figure, sheet));
    for (const auto& table : sheet.tables) EXPECT_TRUE(IsInside(table.box, sheet));
    for (const auto& callout : sheet.callouts) {
        SCOPED_TRACE(callout.id);
        EXPECT_TRUE(IsInside(callout.box, sheet));
        EXPECT_FALSE(Overlap(callout.box, sheet.model.box)) << "covers the model";
        for (const auto& table : sheet.tables)
            EXPECT_FALSE(Overlap(callout.box, table.box)) << "covers the list";
        for (const auto& other : sheet.callouts) {
            EXPECT_FALSE(&other != &callout && Overlap(callout.box, other.box)) << "covers " << other.id;
        }
        for (const auto& leader : callout.leaders) {
            ExpectEndOnRim(callout, leader);
            const PageBox& model = sheet.model.box;
            EXPECT_TRUE(leader.anchor.x > model.x0 - 1 && leader.anchor.x < model.x1 + 1 &&
                        leader.anchor.y > model.y0 - 1 && leader.anchor.y < model.y1 + 1)
                << "points beside the model";
        }
    }
}

// Circles and capsules, few leaders and many.
TEST(SheetMaker, KeepsBalloonsApartAndOnThePage) {
    for (const char* text : {"{item}", "{name} {item}"}) {
        for (const LeaderChoice leaders : {LeaderChoice::One, LeaderChoice::All, LeaderChoice::PerInstance}) {
            SCOPED_TRACE(std::string(text) + ", leaders " + std::to_string(static_cast<int>(leaders)));
            SheetOptions options = Small("front", leaders, false, 2);
            options.labelTemplate = text;
            ExpectTidy(Make(SampleAssembly(), options));
        }
    }
}

// On one axis at least, nothing is left beside the model but what labels take, or would.
TEST(SheetMaker, FillsThePageWithTheModel) {
    for (const char* view : {"front", "top", "iso"}) {
        SheetOptions options = Small(view, LeaderChoice::One, false, 2);
        options.width = 1200;
        options.height = 900;
        const Sheet sheet = Make(SampleAssembly(), options);
        const PageBox& model = sheet.model.box;
        PageBox drawn = model;
        double label = 0.0;
        for (const SheetCallout& callout : sheet.callouts) {
            drawn = {std::min(drawn.x0, callout.box.x0), std::min(drawn.y0, callout.box.y0),
                     std::max(drawn.x1, callout.box.x1), std::max(drawn.y1, callout.box.y1)};
            label = std::max(label, callout.box.x1 - callout.box.x0);
        }
        const double room = options.layout.rules.distance + label;
        const double wide = std::max(drawn.x1 - model.x1, room) + std::max(model.x0 - drawn.x0, room);
        const double high = std::max(drawn.y1 - model.y1, room) + std::max(model.y0 - drawn.y0, room);
        const double freeWidth = sheet.figure.x1 - sheet.figure.x0 - (model.x1 - model.x0) - wide;
        const double freeHeight = sheet.figure.y1 - sheet.figure.y0 - (model.y1 - model.y0) - high;
        EXPECT_LT(std::min(freeWidth, freeHeight), 5.0) << view;
        EXPECT_EQ(sheet.width, 1200.0) << view;
        EXPECT_EQ(sheet.height, 900.0) << view;
        ExpectTidy(sheet);
    }
}

}  // namespace
}  // namespace zrsheet
