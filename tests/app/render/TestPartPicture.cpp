#include "app/render/PartPicture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tuple>

#include "tests/app/render/ModelStage.h"

namespace zrsheet::test {
namespace {

using ::testing::DoubleNear;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

// A coordinate of the page must be the same place in the picture, or every dot of a leader would be off by
// half a pixel.
TEST(PartPicture, HasItsLinesWhereTheCameraHasTheEdges) {
    ModelStage stage(200, 120);
    stage.Add(0, Plate(160, 90, 1, 1));
    stage.Add(1, Box({-30, -20, 10}, {50, 20, 30}));
    const Raster raster = stage.Render();
    ASSERT_EQ(std::tuple(raster.width, raster.height, raster.pixels.size()),
              std::tuple(200, 120, 200U * 120U * 3U));
    EXPECT_THAT(LinesAcross(raster, 60, 0, 199), ElementsAre(DoubleNear(20, 0.5), DoubleNear(70, 0.5),
                                                             DoubleNear(150, 0.5), DoubleNear(180, 0.5)));
    EXPECT_NEAR(ToneAt(raster, 19, 60), ToneAt(raster, 20, 60), 3);
    EXPECT_EQ(ToneAt(raster, 5, 60), 255);
}

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

// Two faces of one part, one behind the other, differ in nothing but depth.
TEST(PartPicture, DrawsTheEdgeWhereAPartHidesItself) {
    ModelStage stage(200, 100);
    stage.Add(0, Plate(160, 80, 1, 1));
    stage.Add(0, Plate(60, 120, 1, 1), dg::Location(dg::FMat33(), {0, 0, 40}));
    EXPECT_THAT(LinesAcross(stage.Render(), 50, 30, 170),
                ElementsAre(DoubleNear(70, 0.5), DoubleNear(130, 0.5)));
}

// Depth is not even in a central view, so what a pixel's depth is differs from place to place.
TEST(PartPicture, JudgesStepsOfDepthByTheirSizeOnThePicture) {
    const dg::Camera3D cameras[] = {
        dg::Camera3D::Orthographic({7000, 0, 0}, {0, 0, -1}, {0, 1, 0}, 1.0, 200, 100, 1000.0),
        dg::Camera3D::Perspective({7000, 0, 1000}, {7000, 0, 0}, {0, 1, 0}, 0.1, 10, 5000, 200, 100)};
    for (const dg::Camera3D& camera : cameras) {
        for (const bool isStep : {false, true}) {
            ModelStage stage(200, 100);
            const dg::Location lift(dg::FMat33(), {0, 0, isStep ? 4.0 : 0.2});
            stage.Add(0, Plate(20000, 300, 1, 1));
            stage.Add(0, Box({6880, -80, -1}, {7000, 80, 0}), lift);
            stage.SetCamera(camera);
            EXPECT_THAT(LinesAcross(stage.Render(), 50, 90, 190), SizeIs(isStep ? 1 : 0)) << isStep;
        }
    }
}

TEST(PartPicture, DrawsACreaseExactlyWhereItIs) {
    ModelStage stage(200, 100);
    stage.Add(0, Box({-40, -80, -40}, {40, 80, 40}), Turned({0, 1, 0}, 45));
    const Raster raster = stage.Render();
    EXPECT_LT(ToneAt(raster, 100, 50), 180);
    EXPECT_NEAR(ToneAt(raster, 99, 50), ToneAt(raster, 100, 50), 25);
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

// Towards its limb a surface falls away faster than many a part lies behind another.
TEST(PartPicture, DrawsNothingBesideTheOutlineOfARoundSurface) {
    ModelStage stage(1000, 40, 10.0);
    stage.Add(0, Mantle(45, 10, 40), Turned({1, 0, 0}, 90));
    const Raster raster = stage.Render();
    EXPECT_THAT(LinesAcross(raster, 20, 0, 999), ElementsAre(DoubleNear(50, 1), DoubleNear(950, 1)));
    EXPECT_EQ(InkIn(raster, 53, 10, 947, 30), 0);
}

// The tones of a cylinder run on where its facets meet.
TEST(PartPicture, ShadesACylinderWithoutSteps) {
    ModelStage stage(200, 100);
    stage.Add(0, Mantle(90, 190, 16), Turned({1, 0, 0}, 90));
    const Raster raster = stage.Render();
    for (int x = 25; x < 175; ++x)
        EXPECT_LE(std::abs(ToneAt(raster, x, 50) - ToneAt(raster, x + 1, 50)), 2) << x;
    EXPECT_GT(ToneAt(raster, 60, 50), ToneAt(raster, 160, 50) + 10);
}

// Which of two coincident faces a ray meets is chance; turning them makes sure that chance has its way.
TEST(PartPicture, HasNoSpecklesWhereFacesOfTwoPartsCoincide) {
    ModelStage stage(200, 200);
    const dg::Location tilt = Turned({0.3, 1, 0.2}, 31.7);
    stage.Add(0, Plate(150, 150, 3, 5), tilt);
    stage.Add(1, Plate(150, 150, 7, 2), tilt);
    EXPECT_EQ(InkIn(stage.Render(), 65, 65, 135, 135), 0);
}

// Facets that should meet often miss each other by a hair, and some rays slip through.
TEST(PartPicture, ClosesHairlineCracksOfTheMesh) {
    ModelStage stage(200, 200);
    const dg::Location tilt = Turned({0, 0, 1}, 33.0);
    stage.Add(0, Box({-70, -70, 0}, {-0.02, 70, 10}), tilt);
    stage.Add(0, Box({0.02, -70, 0}, {70, 70, 10}), tilt);
    EXPECT_EQ(InkIn(stage.Render(), 70, 70, 130, 130), 0);
}

TEST(PartPicture, ClosesCracksThatShowMoreOfThePart) {
    ModelStage stage(200, 200);
    const dg::Location tilt = Turned({0, 0, 1}, 33.0);
    stage.Add(0, Box({-70, -70, 0}, {-0.02, 70, 10}), tilt);
    stage.Add(0, Box({0.02, -70, 0}, {70, 70, 10}), tilt);
    stage.Add(0, Plate(100, 100, 1, 1), dg::Location(dg::FMat33(), {0, 0, -30}));
    EXPECT_EQ(InkIn(stage.Render(), 70, 70, 130, 130), 0);
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

// A part that stands behind the seam of two bands must not show where the bands meet.
TEST(PartPicture, HasNoSeamsBetweenItsBands) {
    ModelStage stage(100, 200);
    stage.Add(0, Box({-30, -90, 0}, {30, 90, 10}), Turned({0, 0, 1}, 0));
    const Raster raster = stage.Render();
    for (int y = 20; y < 180; ++y) {
        for (int x = 0; x < 100; ++x)
            ASSERT_EQ(ToneAt(raster, x, y), ToneAt(raster, x, 100)) << x << ' ' << y;
    }
}

TEST(PartPicture, OfNothingIsWhite) {
    ModelStage stage(20, 10);
    const Raster raster = stage.Render();
    EXPECT_EQ(raster.pixels, std::vector<std::uint8_t>(600, 255));
}

}  // namespace
}  // namespace zrsheet::test
