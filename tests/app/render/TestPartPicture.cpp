#include "app/render/PartPicture.h"

#include <gmock/gmock.h>

#include <gtest/gtest.h>
#include <cmath>

#include <tuple>

#include "tests/app/render/ModelStage.h"

namespace zrsheet::test {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

// Flush faces have equal depths and normals: only the parts tell where the line belongs.
TEST(PartPicture, DrawsAJointBetweenPartsButNotWithinOne) {
    for (const std::uint32_t second : {0U, 1U}) {
        ModelStage stage(200, 100);
        stage.Add(0, Box({-80, -40, 0}, {10, 40, 20}));
        stage.Add(second, Box({10, -40, 0}, {80, 40, 20}));
        EXPECT_THAT(LinesAcross(stage.Render(), 50, 30, 170), SizeIs(second)) << "second part " << second;
    }
}

// Seen almost edge-on, depth changes from pixel to pixel more than it does over many an edge.
TEST(PartPicture, DrawsNothingOnAFlatFaceSeenAtAGrazingAngle) {
    const dg::Camera3D cameras[] = {
        dg::Camera3D::Orthographic({}, {0, 1, -0.03}, {0, 0, 1}, 0.2, 300, 100, 3000.0),
        dg::Camera3D::Perspective({0, -1500, 60}, {}, {0, 0, 1}, 0.06, 100, 4000, 300, 100)};
    for (const dg::Camera3D& camera : cameras) {
        ModelStage stage(300, 100);
        stage.Add(0, Plate(1000, 1000, 13, 7));
        stage.SetCamera(camera);
        const Raster raster = stage.Render();
        const int middle = 50;
        ASSERT_LT(ToneAt(raster, 150, middle), 255);
        EXPECT_EQ(InkIn(raster, 120, middle - 1, 180, middle + 1), 0);
    }
}

// Where there is nothing but ground is told by boxes around the parts, not by rays.
TEST(PartPicture, FillsThePictureWithPartsThatReachBehindTheEyeAndOutOfTheView) {
    ModelStage stage(200, 100);
    stage.Add(0, Plate(1000, 1000, 1, 1));
    const dg::Camera3D cameras[] = {
        dg::Camera3D::Orthographic({}, {0, 0, -1}, {0, 1, 0}, 1.0, 200, 100, 3000.0),
        dg::Camera3D::Perspective({0, -100, 60}, {0, 0, 0}, {0, 0, 1}, 0.5, 1, 4000, 200, 100)};
    for (const dg::Camera3D& camera : cameras) {
        stage.SetCamera(camera);
        const Raster raster = stage.Render();
        EXPECT_EQ(InkIn(raster, 0, 0, 199, 99), 0);
        for (const int x : {1, 100, 198}) {
            for (const int y : {1, 50, 98}) EXPECT_LT(ToneAt(raster, x, y), 255) << x << ", " << y;
        }
    }
}

TEST(PartPicture, DrawsEdgesOfAPrismButNotFacetsOfACylinder) {
    const auto linesInside = [](int sides) {
        ModelStage stage(200, 200);
        stage.Add(0, Mantle(80, 150, sides), Turned({1, 0, 0}, 90));
        return LinesAcross(stage.Render(), 100, 35, 165).size();
    };
    EXPECT_EQ(linesInside(6), 2U);
    EXPECT_EQ(linesInside(20), 0U);
}

// Which of two coincident faces a ray meets is chance; turning them makes sure that chance has its way.
TEST(PartPicture, HasNoSpecklesWhereFacesOfTwoPartsCoincide) {
    ModelStage stage(200, 200);
    const dg::Location tilt = Turned({0.3, 1, 0.2}, 31.7);
    stage.Add(0, Plate(150, 150, 3, 5), tilt);
    stage.Add(1, Plate(150, 150, 7, 2), tilt);
    EXPECT_EQ(InkIn(stage.Render(), 65, 65, 135, 135), 0);
}

// The outlines of a hundred small parts at full width would leave nothing but black.
TEST(PartPicture, DrawsSmallPartsWithFinerLines) {
    ModelStage stage(200, 100);
    stage.Add(0, Box({-80, -40, 0}, {20, 40, 10}));
    stage.Add(1, Box({60, -4, 0}, {68, 4, 10}));
    const Raster raster = stage.Render();
    const double large = LineWeight(raster, 50, 10, 20);
    const double small = LineWeight(raster, 50, 154, 160);
    EXPECT_GT(small, 0.4);
    EXPECT_GT(large, 1.8 * small);
}

// On paper the picture has more pixels, and nothing of it may become thinner for that: outlines, edges over a
// small step, and the finer ones of small parts, also where bands of rows meet.
TEST(PartPicture, HasLinesOfTheSameWidthsWithMorePixels) {
    const auto weights = [](int scale) {
        ModelStage stage(200 * scale, 100 * scale, scale);
        stage.Style().scale = scale;
        stage.Style().outlineWidth = 6.0;
        stage.Add(0, Box({-80, -40, 0}, {20, 16, 10}));
        stage.Add(1, Box({-40, -20, 0}, {0, 10, 14}));
        stage.Add(2, Box({60, -4, 0}, {68, 4, 10}));
        const Raster raster = stage.Render();
        const auto weight = [&](int firstX, int lastX) {
            return LineWeight(raster, 50 * scale, firstX * scale, lastX * scale) / scale;
        };
        const double seam =
            InkIn(raster, 70 * scale, 26 * scale, 80 * scale, 38 * scale) / (10.0 * scale * scale);
        return std::vector<double>{weight(10, 30), weight(50, 70), weight(154, 162), seam};
    };
    const std::vector<double> plain = weights(1);
    const std::vector<double> fine = weights(3);
    for (std::size_t i = 0; i < plain.size(); ++i) EXPECT_NEAR(fine[i], plain[i], 0.15 * plain[i]) << i;
}

// Surfaces and their lines stay grey.
TEST(PartPicture, LiesOnAGroundThatGoesFromOneColourToTheOther) {
    ModelStage stage(101, 101);
    stage.Add(0, Plate(20, 20, 1, 1));
    stage.Style().groundTop = {1.0F, 0.0F, 0.5F, 1.0F};
    stage.Style().groundBottom = {0.0F, 0.0F, 1.0F, 1.0F};
    const Raster raster = stage.Render();
    const auto colour = [&raster](int x, int y) {
        const auto* pixel = &raster.pixels[3 * static_cast<std::size_t>(y * raster.width + x)];
        return std::tuple<int, int, int>(pixel[0], pixel[1], pixel[2]);
    };
    EXPECT_EQ(colour(5, 50), std::tuple(128, 0, 191));
    const auto [red, green, blue] = colour(50, 50);
    EXPECT_TRUE(red == green && green == blue && red > 190) << red << ' ' << green << ' ' << blue;
}

// A tint, by no means the colour itself: labels and lines must stand out from every part.
TEST(PartPicture, TintsPartsByTheirColours) {
    ModelStage stage(200, 100);
    stage.Add(0, Box({-80, -40, 0}, {10, 40, 20}));
    stage.Add(1, Box({10, -40, 0}, {80, 40, 20}));
    const Raster plain = stage.Render();
    stage.Style().colors = {{1, 1, 1, 1}, {1, 0, 0, 1}};
    const Raster tinted = stage.Render();
    const auto pixel = [](const Raster& raster, int x) {
        const auto* first = &raster.pixels[3 * (50 * 200 + static_cast<std::size_t>(x))];
        return std::vector<int>(first, first + 3);
    };
    EXPECT_EQ(pixel(tinted, 50), pixel(plain, 50));
    const int tone = pixel(plain, 150)[0];
    const int other = static_cast<int>(std::lround(tone * (1.0 - stage.Style().colorStrength)));
    EXPECT_THAT(pixel(tinted, 150),
                testing::ElementsAre(tone, testing::AllOf(testing::Ge(other - 1), testing::Le(other + 1)),
                                     testing::_));
}

// Bands of rows are drawn side by side; a line near their seam reaches into both.
TEST(PartPicture, IsTheSameForAnyNumberOfThreads) {
    ModelStage stage(300, 250);
    for (int i = 0; i < 12; ++i) {
        stage.Add(static_cast<std::uint32_t>(i), Mantle(20.0 + 5.0 * i, 90, 24),
                  Turned({1.0, 0.3 * i, 0.2}, 25.0 * i, {10.0 * i - 60.0, 5.0 * i - 30.0, 0}));
    }
    const Raster one = stage.Render(1);
    EXPECT_GT(InkIn(one, 0, 0, 299, 249), 1000);
    EXPECT_TRUE(one == stage.Render(4));
    EXPECT_TRUE(one == stage.Render(3));
}

}  // namespace
}  // namespace zrsheet::test
