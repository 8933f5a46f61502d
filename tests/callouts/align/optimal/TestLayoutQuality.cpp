#include "callouts/align/optimal/LayoutQuality.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/callouts/align/optimal/RandomSheet.h"

namespace zrcallouts {
namespace {

using Kind = LayoutFaultKind;

/// A page of 400 x 300 with a model of 200 x 100 in its middle, which has a hole of 40 x 40.
struct SheetByHand {
    LayoutProblem problem;
    std::vector<ScreenPoint> centres;

    SheetByHand() {
        problem.page = {0, 0, 400, 300};
        problem.model = {100, 100, 300, 200};
        problem.areas = {{problem.model,
                          {{{100, 100}, {300, 100}, {300, 200}, {100, 200}},
                           {{180, 130}, {220, 130}, {220, 170}, {180, 170}}}}};
    }
    SheetByHand& Add(const ScreenPoint& centre, const ScreenPoint& anchor) {
        problem.labels.push_back({{}, {anchor}, centre});
        centres.push_back(centre);
        return *this;
    }
    std::string Faults() const {
        std::string text;
        for (const auto& fault : MeasureLayout(problem, centres).faults) {
            text += std::to_string(static_cast<int>(fault.kind)) + ":" + std::to_string(fault.label) + "," +
                    std::to_string(fault.other) + " ";
        }
        return text;
    }
};

TEST(LayoutQuality, NamesEveryKindOfFault) {
    const auto fresh = [] { return SheetByHand(); };
    EXPECT_EQ(fresh().Add({70, 110}, {110, 110}).Add({70, 150}, {110, 150}).Faults(), "") << "a good one";
    EXPECT_EQ(fresh().Add({70, 110}, {110, 110}).Add({70, 130}, {110, 130}).Faults(), "0:0,1 ") << "overlap";
    EXPECT_EQ(fresh().Add({70, 110}, {110, 150}).Add({70, 150}, {110, 110}).Faults(), "1:0,1 ") << "cross";
    EXPECT_EQ(fresh().Add({30, 150}, {110, 150}).Add({70, 150}, {110, 151}).Faults(), "2:0,1 ") << "meet";
    EXPECT_EQ(fresh().Add({12, 150}, {110, 150}).Faults(), "3:0,0 ") << "off the page";
    EXPECT_EQ(fresh().Add({13, 150}, {110, 150}).Faults(), "") << "at its border";
    EXPECT_EQ(fresh().Add({110, 90}, {110, 110}).Faults(), "4:0,0 ") << "over the model's edge";
    EXPECT_EQ(fresh().Add({150, 150}, {110, 110}).Faults(), "4:0,0 ") << "inside it";
    EXPECT_EQ(fresh().Add({200, 150}, {110, 110}).Faults(), "") << "in its hole";
    SheetByHand glass = fresh().Add({350, 250}, {290, 190});
    glass.problem.obstacles = {{340, 200, 400, 260}};
    EXPECT_EQ(glass.Faults(), "4:0,0 ") << "on a glass";
}

TEST(LayoutQuality, MeasuresLengthsAgainstLabelsThatAreAlone) {
    SheetByHand sheet;
    sheet.Add({70, 110}, {130, 110}).Add({70, 190}, {130, 160});
    const LayoutQuality quality = MeasureLayout(sheet.problem, sheet.centres);
    EXPECT_NEAR(quality.length, 60.0 + std::hypot(60.0, 30.0), 1e-9);
    // Alone the first would be above its anchor, 30 + 10 away, the second where its anchor is.
    EXPECT_NEAR(quality.shortest, 40.0 + 60.0, 1e-9);
    EXPECT_NEAR(quality.displacement, 0.5 * (std::hypot(60.0, 40.0) + 30.0), 1e-9);
    EXPECT_NEAR(quality.Ratio(), quality.length / 100.0, 1e-9);
}

// The sweep must not lose pairs: against all pairs, on crowded sheets.
TEST(LayoutQuality, FindsWhatLookingAtAllPairsFinds) {
    for (unsigned seed = 0; seed < 30; ++seed) {
        LayoutProblem sheet = MakeSheet({80, 0.6, false}, seed);
        std::mt19937 random(seed);
        std::vector<ScreenPoint> centres;
        for (std::size_t i = 0; i < sheet.labels.size(); ++i)
            centres.push_back({1000.0 * Random(random), 800.0 * Random(random)});
        std::size_t overlaps = 0;
        std::size_t crossings = 0;
        std::size_t touches = 0;
        const auto leader = [&](std::size_t i) {
            const auto& label = sheet.labels[i];
            return ScreenSegment{label.form.Start(centres[i], label.anchors[0]), label.anchors[0]};
        };
        for (std::size_t i = 0; i < centres.size(); ++i) {
            for (std::size_t k = 0; k < centres.size(); ++k) {
                const LabelForm& own = sheet.labels[i].form;
                if (k < i) overlaps += own.BoxAt(centres[i]).Overlaps(sheet.labels[k].form.BoxAt(centres[k]));
                if (k < i) crossings += DoCross(leader(i), leader(k));
                if (k != i) touches += own.IsTouched(centres[i], leader(k), 0.0);
            }
        }
        const LayoutQuality quality = MeasureLayout(sheet, centres);
        EXPECT_EQ(quality.Count(Kind::LabelsOverlap), overlaps) << seed;
        EXPECT_EQ(quality.Count(Kind::LeadersCross), crossings) << seed;
        EXPECT_EQ(quality.Count(Kind::LeaderMeetsLabel), touches) << seed;
    }
}

// A report of all pairs of a hundred thousand labels would fill the disk.
TEST(LayoutQuality, SaysThatThereAreMoreFaultsThanItLists) {
    LayoutProblem sheet = MakeSheet({200, 0.6, false}, 1);
    const ScreenPoint corner{20.0, 20.0};
    EXPECT_TRUE(MeasureLayout(sheet, std::vector(200, corner)).isComplete);
    const auto labels = sheet.labels;
    while (sheet.labels.size() < 4000) sheet.labels.insert(sheet.labels.end(), labels.begin(), labels.end());
    const LayoutQuality quality = MeasureLayout(sheet, std::vector(sheet.labels.size(), corner));
    EXPECT_FALSE(quality.isComplete);
    EXPECT_LT(quality.faults.size(), 4000 * 3999 / 20);
}

}  // namespace
}  // namespace zrcallouts
