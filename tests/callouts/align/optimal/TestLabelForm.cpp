#include "callouts/align/optimal/LabelForm.h"

#include <gtest/gtest.h>

namespace zrcallouts {
namespace {

using zrannotations::BalloonShape;

const LabelForm kCapsule{60.0, 20.0};
const LabelForm kBare{60.0, 20.0, BalloonShape::None};
const LabelForm kStack{20.0, 60.0, BalloonShape::Round, 3};
constexpr ScreenPoint kCentre{100.0, 50.0};

TEST(LabelForm, LeadersStartWhereTheyAreShortAndLeaveTheTextAlone) {
    const struct {
        const char* name;
        LabelForm form;
        ScreenPoint anchor;
        ScreenPoint start;
    } rows[] = {
        {"right of a capsule", kCapsule, {300, 55}, {120, 50}},
        {"below it", kCapsule, {90, 200}, {90, 50}},
        {"left of bare text", kBare, {0, 0}, {70, 60}},
        {"above it", kBare, {110, 0}, {110, 40}},
        {"below it", kBare, {110, 90}, {110, 60}},
        {"at the height of a stack's second balloon", kStack, {0, 55}, {100, 50}},
        {"below a stack", kStack, {0, 500}, {100, 70}},
        {"a circle wider than high", {16.0, 26.0}, {0, 50}, {100, 50}},
    };
    for (const auto& row : rows) EXPECT_EQ(row.form.Start(kCentre, row.anchor), row.start) << row.name;
}

// Leaders that pass in the free corners of a round label's box do not touch it.
TEST(LabelForm, KnowsLeadersThatRunIntoIt) {
    const struct {
        const char* name;
        LabelForm form;
        ScreenSegment leader;
        double clearance;
        bool isTouched;
    } rows[] = {
        {"through", kCapsule, {{0, 50}, {300, 50}}, 0.0, true},
        {"over the corner of a capsule", kCapsule, {{60, 50}, {80, 35}}, 0.0, false},
        {"over the corner of a box", {60.0, 20.0, BalloonShape::Box}, {{60, 50}, {80, 35}}, 0.0, true},
        {"beside", kCapsule, {{0, 61}, {300, 61}}, 0.0, false},
        {"too near beside", kCapsule, {{0, 61}, {300, 61}}, 2.0, true},
        {"ending before", kCapsule, {{0, 50}, {69, 50}}, 0.0, false},
        {"starting inside", kCapsule, {{101, 50}, {102, 50}}, 0.0, true},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.form.IsTouched(kCentre, row.leader, row.clearance), row.isTouched) << row.name;
}

// A label that stands just so far aside has a leader that just clears its neighbour.
TEST(LabelForm, SlantIsWhereLeadersBeginToTouchNeighbours) {
    for (const LabelForm& form : {LabelForm{}, LabelForm{26.0, 26.0, BalloonShape::Box}}) {
        for (const double gap : {4.0, 8.0, 20.0}) {
            const ScreenPoint neighbour{0.0, form.height + gap};
            const auto isTouched = [&](double slant) {
                return form.IsTouched(neighbour, {{0.0, 0.0}, {100.0, 100.0 * slant}}, 0.0);
            };
            EXPECT_FALSE(isTouched(form.Slant(gap))) << gap;
            EXPECT_TRUE(isTouched(1.5 * form.Slant(gap))) << gap;
        }
    }
}

}  // namespace
}  // namespace zrcallouts
