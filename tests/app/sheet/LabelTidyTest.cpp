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
/// Where the middles of balloons stand around the model, and between what they stay while there is room.
constexpr PageBox kFrame{kModel.x0 - 30, kModel.y0 - 30, kModel.x1 + 30, kModel.y1 + 30};
constexpr PageBox kEnds{kModel.x0, kFigure.y0 + 20, kModel.x1, kFigure.y1 - 20};
constexpr double kGap = 8.0;
constexpr double kTouching = kGap + 0.5;  // balloons as near as this hold each other

/// On the frame, at the anchors' height or above or below them; anchors all over the model or in a heap.
std::vector<Balloon> RandomBalloons(std::mt19937& random, std::size_t count) {
    const double spread = random() % 3 == 0 ? 0.15 : 1.0;
    std::uniform_real_distribution<double> x(kModel.x0, kModel.x0 + spread * (kModel.x1 - kModel.x0));
    std::uniform_real_distribution<double> y(kModel.y1 - spread * (kModel.y1 - kModel.y0), kModel.y1);
    std::vector<Balloon> balloons;
    for (std::size_t i = 0; i < count; ++i) {
        Balloon balloon;
        balloon.anchor.x = x(random);
        balloon.anchor.y = y(random);
        const std::array<PagePoint, 4> places{{{kFrame.x0, balloon.anchor.y},
                                               {kFrame.x1, balloon.anchor.y},
                                               {balloon.anchor.x, kFrame.y0},
                                               {balloon.anchor.x, kFrame.y1}}};
        balloon.centre = places[random() % places.size()];
        balloon.width = random() % 4 == 0 ? 26.0 + static_cast<double>(random() % 60) : 26.0;
        balloon.height = 26.0;
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

/// By the line of the frame on which each balloon stands; every one must stand on one.
std::array<Lane, 4> LanesOf(const std::vector<Balloon>& balloons) {
    std::array<Lane, 4> lanes{{{true, {}}, {true, {}}, {false, {}}, {false, {}}}};
    for (const Balloon& balloon : balloons) {
        const std::array<double, 4> off{
            std::abs(balloon.centre.x - kFrame.x0), std::abs(balloon.centre.x - kFrame.x1),
            std::abs(balloon.centre.y - kFrame.y0), std::abs(balloon.centre.y - kFrame.y1)};
        const auto nearest = std::min_element(off.begin(), off.end());
        EXPECT_LT(*nearest, 1e-9) << "a balloon left the frame";
        lanes[static_cast<std::size_t>(nearest - off.begin())].balloons.push_back(balloon);
    }
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

bool DoCross(const Balloon& p, const Balloon& q) {
    return Turn(p.centre, p.anchor, q.centre) * Turn(p.centre, p.anchor, q.anchor) < -1e-6 &&
           Turn(q.centre, q.anchor, p.centre) * Turn(q.centre, q.anchor, p.anchor) < -1e-6;
}

std::size_t CrossingsOf(const Lane& lane) {
    std::size_t crossings = 0;
    for (std::size_t i = 0; i < lane.balloons.size(); ++i) {
        for (std::size_t k = i + 1; k < lane.balloons.size(); ++k)
            crossings += DoCross(lane.balloons[i], lane.balloons[k]);
    }
    return crossings;
}

void ExpectApart(const Lane& lane) {
    for (std::size_t i = 0; i + 1 < lane.balloons.size(); ++i)
        EXPECT_GE(lane.GapAfter(i), 0.99 * kGap) << "balloon " << i;
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
        std::vector<Balloon> balloons = RandomBalloons(random, 1 + seed % 61);
        TidyBalloons(balloons, kModel, kFigure);
        for (const Lane& lane : LanesOf(balloons)) {
            SCOPED_TRACE((lane.isUpright ? "upright side of " : "level side of ") +
                         std::to_string(lane.balloons.size()));
            ExpectApart(lane);
            ExpectNear(lane);
            ExpectWithinRoom(lane);
            EXPECT_EQ(CrossingsOf(lane), 0U);
        }
        if (HasFailure()) return;
    }
}

// Callouts and balloons belong together by their places in the two lists.
TEST(LabelTidy, KeepsAnchorsAndSizes) {
    std::mt19937 random(7);
    const std::vector<Balloon> before = RandomBalloons(random, 24);
    std::vector<Balloon> after = before;
    TidyBalloons(after, kModel, kFigure);
    for (std::size_t i = 0; i < before.size(); ++i) {
        EXPECT_EQ(before[i].anchor.x, after[i].anchor.x);
        EXPECT_EQ(before[i].anchor.y, after[i].anchor.y);
        EXPECT_EQ(before[i].width, after[i].width);
    }
}

// Nothing holds it, so its leader is the shortest there is.
TEST(LabelTidy, PutsALonelyBalloonLevelWithItsAnchor) {
    std::vector<Balloon> balloons{{{kFrame.x1, 200}, {kModel.x1 - 5, 333}, 26, 26}};
    TidyBalloons(balloons, kModel, kFigure);
    EXPECT_EQ(balloons[0].centre.x, kFrame.x1);
    EXPECT_EQ(balloons[0].centre.y, 333);
}

}  // namespace
}  // namespace zrsheet
