#include "callouts/align/optimal/LayoutSolver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "callouts/align/optimal/LayoutQuality.h"
#include "tests/callouts/align/optimal/RandomSheet.h"

namespace zrcallouts {
namespace {

using Kind = LayoutFaultKind;
using Centres = std::vector<ScreenPoint>;

std::string Describe(const LayoutQuality& quality) {
    std::string text;
    for (const auto& fault : quality.faults) {
        text += " " + std::to_string(static_cast<int>(fault.kind)) + ":" + std::to_string(fault.label) + "," +
                std::to_string(fault.other);
    }
    return text;
}

double LengthOf(const LayoutProblem& sheet, const Centres& centres) {
    return MeasureLayout(sheet, centres).length;
}

TEST(LayoutSolver, LeavesNoFaultsOnSheetsWithRoom) {
    using enum LayoutPattern;
    const struct {
        const char* name;
        SheetKind kind;
        unsigned sheets;
    } sweeps[] = {
        {"few", {12}, 100},
        {"many", {60}, 40},
        {"half the model", {60, 0.5}, 40},
        {"a heap", {20, 0.15}, 60},
        {"labels of many sizes", {40, 1.0, false, 130.0}, 60},
        {"evenly", {40, 1.0, true, 90.0, Rectangle}, 40},
        {"columns", {30, 1.0, true, 90.0, Columns}, 40},
        {"rows", {40, 1.0, true, 90.0, Rows}, 40},
        {"a circle", {30, 1.0, true, 150.0, Circle}, 40},
        {"an outline", {40, 1.0, true, 90.0, Silhouette}, 40},
        {"two rows", {100}, 20},
    };
    for (const auto& sweep : sweeps) {
        for (unsigned seed = 0; seed < sweep.sheets; ++seed) {
            const LayoutProblem sheet = MakeSheet(sweep.kind, seed);
            const LayoutQuality quality = MeasureLayout(sheet, SolveLayout(sheet));
            EXPECT_TRUE(quality.faults.empty())
                << sweep.name << ", seed " << seed << ":" << Describe(quality);
        }
    }
}

// The lengths to come near to were found by trying all sides and orders of a few labels crowded in a corner,
// and, on sheets up to 98 % full, by the cheapest assignment of all labels to slots around the model. That
// one minds neither crossings nor leaders that run into labels, which may cost length.
TEST(LayoutSolver, ComesNearToTheShortestThereIs) {
    const struct {
        SheetKind kind;
        double limit;
        std::vector<double> shortest;  // by seed
    } rows[] = {
        {{5, 0.1}, 1.001, {1389.98, 335.71, 859.57, 494.70, 452.77, 487.35, 513.72, 732.86, 348.36, 339.28}},
        {{20}, 1.001, {2974.00, 3018.92, 3632.70, 3249.76, 2415.33, 3381.37}},
        {{60}, 1.001, {10392.46, 8768.71, 10116.06, 10786.56, 8940.36, 8468.14}},
        {{80}, 1.004, {14026.29, 12646.55, 14830.84, 14827.18, 12944.64, 11823.68}},
        {{90}, 1.013, {16283.90, 15257.59, 17925.03, 17473.85, 15536.33, 14079.85}},
    };
    for (const auto& row : rows) {
        for (unsigned seed = 0; seed < row.shortest.size(); ++seed) {
            const LayoutProblem sheet = MakeSheet(row.kind, seed);
            EXPECT_LE(LengthOf(sheet, SolveLayout(sheet)), row.limit * row.shortest[seed])
                << row.kind.labels << " labels, seed " << seed;
        }
    }
}

/// How far the label that moves most goes.
double FarthestMove(const Centres& from, const Centres& to) {
    double farthest = 0.0;
    for (std::size_t i = 0; i < from.size(); ++i) farthest = std::max(farthest, Distance(from[i], to[i]));
    return farthest;
}

// An author turns the model a little, or moves a part: what is good already must not be reshuffled. Labels
// that change places move by a label and a gap at least.
TEST(LayoutSolver, KeepsSidesAndOrderWhenLittleMoves) {
    constexpr double kPitch = 26.0 + 8.0;
    for (unsigned seed = 0; seed < 40; ++seed) {
        LayoutProblem sheet = MakeSheet({50}, seed);
        const Centres centres = SolveLayout(sheet);
        std::mt19937 random(seed);
        for (std::size_t i = 0; i < centres.size(); ++i) sheet.labels[i].centre = centres[i];
        EXPECT_LT(FarthestMove(centres, SolveLayout(sheet)), kPitch) << "again, seed " << seed;
        for (LayoutLabel& label : sheet.labels) {
            label.anchors[0].x += 2.0 * Random(random) - 1.0;
            label.anchors[0].y += 2.0 * Random(random) - 1.0;
        }
        EXPECT_LT(FarthestMove(centres, SolveLayout(sheet)), kPitch) << "a pixel, seed " << seed;
    }
}

// Every third label was placed by hand, anywhere around the model, and a glass stands beside it.
TEST(LayoutSolver, LeavesPinnedLabelsAndKeepsOffThemAndGlasses) {
    for (unsigned seed = 0; seed < 40; ++seed) {
        LayoutProblem sheet = MakeSheet({30}, seed);
        Centres before = SolveLayout(sheet);
        sheet.obstacles = {{920, 200, 990, 300}};
        for (std::size_t i = 0; i < before.size(); ++i) {
            sheet.labels[i].centre = before[i];
            sheet.labels[i].isPinned =
                i % 3 == 0 && !sheet.obstacles[0].Overlaps(sheet.labels[i].form.BoxAt(before[i]), 8.0);
        }
        const Centres centres = SolveLayout(sheet);
        for (std::size_t i = 0; i < centres.size(); ++i) {
            EXPECT_TRUE(!sheet.labels[i].isPinned || centres[i] == before[i]) << "seed " << seed;
        }
        const LayoutQuality quality = MeasureLayout(sheet, centres);
        EXPECT_EQ(quality.Count(Kind::LabelsOverlap), 0U) << "seed " << seed << Describe(quality);
        EXPECT_EQ(quality.Count(Kind::LabelOnModel), 0U) << "seed " << seed << Describe(quality);
    }
}

// Labels with a leader to each of several parts are as long as their leaders together.
TEST(LayoutSolver, PlacesALabelBetweenAllThatItPointsAt) {
    LayoutProblem sheet = MakeSheet({1}, 1);
    sheet.labels[0].anchors = {{100, 300}, {110, 400}, {95, 380}};
    const Centres centres = SolveLayout(sheet);
    EXPECT_LT(centres[0].x, sheet.model.x0);
    const double length = LengthOf(sheet, centres);
    for (const double move : {-3.0, 3.0}) {
        EXPECT_LT(length, LengthOf(sheet, {{centres[0].x, centres[0].y + move}}) + 0.01);
    }
}

// More labels than the page has room for: they all get a place, the page stays tidy where it can, and what
// hangs over is told.
TEST(LayoutSolver, LosesNoLabelWhereThereIsNoRoom) {
    for (const double margin : {90.0, 30.0}) {
        LayoutProblem sheet = MakeSheet({400, 1.0, true, margin}, 3);
        const Centres centres = SolveLayout(sheet);
        ASSERT_EQ(centres.size(), 400U);
        for (const ScreenPoint& centre : centres) EXPECT_TRUE(std::isfinite(centre.x + centre.y));
        const LayoutQuality quality = MeasureLayout(sheet, centres);
        EXPECT_GT(quality.Count(Kind::LabelOffPage) + quality.Count(Kind::LabelOnModel), 0U) << margin;
    }
}

}  // namespace
}  // namespace zrcallouts
