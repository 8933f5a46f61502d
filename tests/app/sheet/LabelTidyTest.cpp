#include "app/sheet/LabelTidy.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

namespace zrsheet {
namespace {

// Its right edge lies where no row of balloons on the level sides can end by chance.
constexpr PageBox kModel{200, 150, 600.3, 450};
constexpr PageBox kFigure{100, 50, 700, 550};
/// Between what the middles of balloons stay while there is room.
constexpr PageBox kEnds{kModel.x0, kFigure.y0 + 20, kModel.x1, kFigure.y1 - 20};
constexpr double kGap = 8.0;
constexpr double kTouching = kGap + 0.5;  // balloons as near as this hold each other

/// Anchors all over the model or in a heap.
std::vector<Balloon> RandomBalloons(std::mt19937& random, std::size_t count, bool areAlike) {
    const double spread = random() % 3 == 0 ? 0.15 : 1.0;
    std::uniform_real_distribution<double> x(kModel.x0, kModel.x0 + spread * (kModel.x1 - kModel.x0));
    std::uniform_real_distribution<double> y(kModel.y1 - spread * (kModel.y1 - kModel.y0), kModel.y1);
    std::vector<Balloon> balloons;
    for (std::size_t i = 0; i < count; ++i) {
        Balloon balloon;
        balloon.anchor.x = x(random);
        balloon.anchor.y = y(random);
        balloon.centre = balloon.anchor;
        balloon.width = random() % 4 == 0 ? 26.0 + static_cast<double>(random() % 60) : 26.0;
        balloon.height = !areAlike && random() % 5 == 0 ? 40.0 : 26.0;
        balloons.push_back(balloon);
    }
    return balloons;
}

/// One side's balloons in their order along it, as plain numbers.
struct Lane {
    bool isUpright;
    std::vector<Balloon> balloons;

    double Centre(std::size_t i) const { return isUpright ? balloons[i].centre.y : balloons[i].centre.x; }
    double Anchor(std::size_t i) const { return isUpright ? balloons[i].anchor.y : balloons[i].anchor.x; }
    double Half(std::size_t i) const { return 0.5 * (isUpright ? balloons[i].height : balloons[i].width); }
    double GapAfter(std::size_t i) const { return Centre(i + 1) - Half(i + 1) - Centre(i) - Half(i); }
    double Low() const { return isUpright ? kEnds.y0 : kEnds.x0; }
    double High() const { return isUpright ? kEnds.y1 : kEnds.x1; }
};

/// Left, right, above or below the model. Columns have the corners and stand in lines; what is in no column
/// is in a row.
std::size_t SideOf(const Balloon& balloon) {
    if (balloon.centre.x < kModel.x0) return 0;
    if (std::abs(balloon.centre.x - kModel.x1 - 17 - 0.5 * balloon.width) < 1e-9) return 1;
    return balloon.centre.y < kModel.y0 ? 2 : 3;
}

std::array<Lane, 4> LanesOf(const std::vector<Balloon>& balloons) {
    std::array<Lane, 4> lanes{{{true, {}}, {true, {}}, {false, {}}, {false, {}}}};
    for (const Balloon& balloon : balloons) lanes[SideOf(balloon)].balloons.push_back(balloon);
    for (Lane& lane : lanes) {
        std::sort(lane.balloons.begin(), lane.balloons.end(), [&](const Balloon& a, const Balloon& b) {
            return lane.isUpright ? a.centre.y < b.centre.y : a.centre.x < b.centre.x;
        });
    }
    return lanes;
}

double Turn(const PagePoint& a, const PagePoint& b, const PagePoint& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

/// Leaders begin in the middle of a circle, and in a capsule as near to their anchor as its round ends allow.
PagePoint StartOf(const Balloon& balloon) {
    const double reach = std::max(0.5 * (balloon.width - balloon.height), 0.0);
    return {std::clamp(balloon.anchor.x, balloon.centre.x - reach, balloon.centre.x + reach),
            balloon.centre.y};
}

bool DoCross(const Balloon& a, const Balloon& b) {
    const PagePoint p = StartOf(a);
    const PagePoint q = StartOf(b);
    return Turn(p, a.anchor, q) * Turn(p, a.anchor, b.anchor) < -1e-6 &&
           Turn(q, b.anchor, p) * Turn(q, b.anchor, a.anchor) < -1e-6;
}

std::size_t CrossingsOf(const Lane& lane) {
    std::size_t crossings = 0;
    for (std::size_t i = 0; i < lane.balloons.size(); ++i) {
        for (std::size_t k = i + 1; k < lane.balloons.size(); ++k)
            crossings += DoCross(lane.balloons[i], lane.balloons[k]);
    }
    return crossings;
}

bool AreApart(const PageBox& a, const PageBox& b, double gap) {
    return a.x1 + gap <= b.x0 || b.x1 + gap <= a.x0 || a.y1 + gap <= b.y0 || b.y1 + gap <= a.y0;
}

PageBox BoxOf(const Balloon& balloon) {
    return {balloon.centre.x - 0.5 * balloon.width, balloon.centre.y - 0.5 * balloon.height,
            balloon.centre.x + 0.5 * balloon.width, balloon.centre.y + 0.5 * balloon.height};
}

/// From each other, also around the corners, and from the model.
void ExpectApart(const std::vector<Balloon>& balloons) {
    for (std::size_t i = 0; i < balloons.size(); ++i) {
        EXPECT_TRUE(AreApart(BoxOf(balloons[i]), kModel, 0.99 * kGap))
            << "balloon " << i << " covers the model";
        for (std::size_t k = 0; k < i; ++k) {
            EXPECT_TRUE(AreApart(BoxOf(balloons[i]), BoxOf(balloons[k]), 0.99 * kGap))
                << "balloons " << k << " and " << i;
        }
    }
}

/// Balloons that hold each other share the way to their anchors fairly, unless the end of the side holds
/// them.
void ExpectNear(const Lane& lane) {
    for (std::size_t first = 0; first < lane.balloons.size();) {
        std::size_t last = first;
        while (last + 1 < lane.balloons.size() && lane.GapAfter(last) < kTouching) ++last;
        double way = 0.0;
        for (std::size_t i = first; i <= last; ++i) way += lane.Centre(i) - lane.Anchor(i);
        const bool isHeld = lane.Centre(first) < lane.Low() + 0.5 || lane.Centre(last) > lane.High() - 0.5;
        if (!isHeld) {
            EXPECT_NEAR(way / static_cast<double>(last - first + 1), 0.0, 0.5)
                << "balloons " << first << " to " << last;
        }
        first = last + 1;
    }
}

/// The room along a side ends with the figure, and only balloons that need more stand beyond it.
void ExpectWithinRoom(const Lane& lane) {
    if (lane.balloons.empty()) return;
    const std::size_t last = lane.balloons.size() - 1;
    double tight = 0.0;
    for (std::size_t i = 0; i < last; ++i) tight += lane.Half(i) + kGap + lane.Half(i + 1);
    if (tight > lane.High() - lane.Low()) return;
    EXPECT_GE(lane.Centre(0), lane.Low() - 1e-6);
    EXPECT_LE(lane.Centre(last), lane.High() + 1e-6);
}

// Pages of all fillings, from one balloon to more than the sides hold.
TEST(LabelTidy, LeavesOrderOnEverySide) {
    for (unsigned seed = 0; seed < 600; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        const bool areAlike = seed % 3 != 0;
        std::vector<Balloon> balloons = RandomBalloons(random, 1 + seed % 61, areAlike);
        TidyBalloons(balloons, kModel, kFigure);
        ExpectApart(balloons);
        for (const Lane& lane : LanesOf(balloons)) {
            SCOPED_TRACE((lane.isUpright ? "upright side of " : "level side of ") +
                         std::to_string(lane.balloons.size()));
            ExpectNear(lane);
            ExpectWithinRoom(lane);
            if (areAlike) {
                EXPECT_EQ(CrossingsOf(lane), 0U);
            }
        }
        if (HasFailure()) return;
    }
}

// Callouts and balloons belong together by their places in the two lists.
TEST(LabelTidy, KeepsAnchorsAndSizes) {
    std::mt19937 random(7);
    const std::vector<Balloon> before = RandomBalloons(random, 24, false);
    std::vector<Balloon> after = before;
    TidyBalloons(after, kModel, kFigure);
    for (std::size_t i = 0; i < before.size(); ++i) {
        EXPECT_EQ(before[i].anchor.x, after[i].anchor.x);
        EXPECT_EQ(before[i].anchor.y, after[i].anchor.y);
        EXPECT_EQ(before[i].width, after[i].width);
    }
}

// Nothing holds them, so their leaders are the shortest there are: straight to the side that is nearest.
TEST(LabelTidy, PutsLonelyBalloonsStraightBesideTheirAnchors) {
    std::vector<Balloon> balloons{{{400, 300}, {kModel.x1 - 5, 333}, 26, 26},
                                  {{400, 300}, {kModel.x0 + 5, 222}, 100, 26},
                                  {{400, 300}, {444, kModel.y0 + 1}, 26, 50}};
    TidyBalloons(balloons, kModel, kFigure);
    EXPECT_EQ(balloons[0].centre.x, kModel.x1 + 30);
    EXPECT_EQ(balloons[0].centre.y, 333);
    EXPECT_EQ(balloons[1].centre.x, kModel.x0 - 67) << "wide ones keep their ends off the model";
    EXPECT_EQ(balloons[1].centre.y, 222);
    EXPECT_EQ(balloons[2].centre.x, 444);
    EXPECT_EQ(balloons[2].centre.y, kModel.y0 - 42) << "and so do high ones";
}

}  // namespace
}  // namespace zrsheet
