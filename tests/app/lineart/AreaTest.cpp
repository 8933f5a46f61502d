#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tests/app/lineart/ArtStage.h"

namespace zrsheet::test {
namespace {

bool IsInside(const VisibleArea& area, double x, double y) {
    bool isInside = false;
    for (const auto& ring : area.rings) {
        for (std::size_t i = 0; i < ring.size(); ++i) {
            const ArtPoint& a = ring[i];
            const ArtPoint& b = ring[(i + 1) % ring.size()];
            if ((a.y > y) != (b.y > y) && x < a.x + (y - a.y) * (b.x - a.x) / (b.y - a.y))
                isInside = !isInside;
        }
    }
    return isInside;
}

// Who clicks on a part means that part: asked at random places, areas answer as rays do.
TEST(VisibleAreas, AreWhereRaysMeetTheirParts) {
    ArtStage stage;
    for (int i = 0; i < 6; ++i) {
        stage.Add(Drum(14 + 4 * i, 80, 24),
                  Turned({1.0, 0.1 * i, 0.3}, 41.0 * i, {50.0 * i - 130, 15.0 * i - 40, 0}));
        stage.Add(Box({-25, -25, -15}, {25, 25, 60}),
                  Turned({0.2, 1, 0.1 * i}, 27.0 * i, {45.0 * i - 120, 0, 10}));
    }
    stage.Add(Box({-190, -140, -150}, {190, 140, -140}));
    stage.LookFrom({0.2, 0.3, 1.0});
    const LineArt art = stage.Draw();
    std::mt19937 random(7);
    std::uniform_real_distribution<double> column(0.0, 400.0);
    std::uniform_real_distribution<double> row(0.0, 300.0);
    constexpr int kClicks = 5000;
    int agreed = 0;
    for (int i = 0; i < kClicks; ++i) {
        const double x = column(random);
        const double y = row(random);
        const zrg::RayHit hit = stage.Scene().Nearest(stage.Camera().PixelRay(x, y));
        agreed += std::all_of(art.areas.begin(), art.areas.end(), [&](const VisibleArea& area) {
            return IsInside(area, x, y) == (hit && hit.placement == area.placement);
        });
    }
    EXPECT_GT(agreed, kClicks * 99 / 100);
}

// A frame around a hole is no place to click on what stands in the hole.
TEST(VisibleAreas, HaveHolesWhereOtherPartsStandInFront) {
    ArtStage stage;
    stage.Add(Box({-100, -80, 0}, {100, 80, 10}));
    stage.Add(Box({-40, -30, 10}, {40, 30, 20}));
    const LineArt art = stage.Draw();
    ASSERT_EQ(art.areas.size(), 2U);
    EXPECT_EQ(art.areas[0].rings.size(), 2U);
    EXPECT_EQ(art.areas[1].rings.size(), 1U);
    EXPECT_EQ(art.areas[1].rings[0].size(), 4U) << "a rectangle has four corners";
}

// By chance, triangle by triangle, nobody could point at either.
TEST(VisibleAreas, BelongToTheFirstOfPartsThatCoincide) {
    ArtStage stage;
    const dg::Location tilt = Turned({0.3, 1, 0.2}, 31.7);
    stage.Add(Plate(160, 120, 7, 5), tilt);
    stage.Add(Box({-80, -60, -10}, {80, 60, 0}), tilt);
    const LineArt art = stage.Draw();
    ASSERT_EQ(art.areas.size(), 2U);
    EXPECT_EQ(art.areas[0].rings.size(), 1U) << "all of the plate, and no hole in it";
}

}  // namespace
}  // namespace zrsheet::test
