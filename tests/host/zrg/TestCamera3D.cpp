#include "dg/Camera3D.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace dg {
namespace {

constexpr int kWidth = 800;
constexpr int kHeight = 600;

double Distance(const DPoint3D& point, const Ray& ray) {
    return (point - ray.origin).Cross(ray.direction).Length();
}

Camera3D Oblique() {
    return Camera3D::Orthographic(DPoint3D(5, -3, 2), DVec3(1, 2, -1.5), DVec3(0, 0, 1), 12.5, kWidth,
                                  kHeight, 400);
}

Camera3D Central() {
    return Camera3D::Perspective(DPoint3D(30, 20, 10), DPoint3D(1, 2, 3), DVec3(0, 0, 1), 0.8, 0.5, 500,
                                 kWidth, kHeight);
}

TEST(Camera3D, PutsTheAxesOfAFrontViewWhereTheReaderExpectsThem) {
    // Looking along +y with z up: x to the right, and pixel y downwards.
    const auto front = Camera3D::Orthographic(DPoint3D(100, 0, 50), DVec3(0, 3, 0), DVec3(0, 0, 1), 2.0,
                                              kWidth, kHeight, 1000);
    const struct {
        DPoint3D world;
        double x;
        double y;
        double z;
    } rows[] = {
        {{100, 0, 50}, 400, 300, 0.5},     {{110, 0, 50}, 420, 300, 0.5},    {{100, 0, 60}, 400, 280, 0.5},
        {{100, -1000, 50}, 400, 300, 0.0}, {{100, 1000, 50}, 400, 300, 1.0},
    };
    for (const auto& row : rows) {
        const DPoint3D pixel = row.world * front.GetWorldToPixel();
        EXPECT_NEAR(pixel.x, row.x, 1e-9);
        EXPECT_NEAR(pixel.y, row.y, 1e-9);
        EXPECT_NEAR(pixel.z, row.z, 1e-9);
    }
    EXPECT_NEAR(front.PixelRay(0, 0).direction.y, 1.0, 1e-12);
}

TEST(Camera3D, SeesNearAndFarPlaneAndForeshortensInPerspective) {
    const auto eye = Camera3D::Perspective(DPoint3D(0, -10, 0), DPoint3D(0, 0, 0), DVec3(0, 0, 1), M_PI / 2,
                                           5, 20, kWidth, kHeight);
    const struct {
        DPoint3D world;
        double x;
        double y;
        double z;
    } rows[] = {
        {{0, -5, 0}, 400, 300, 0.0},    // on the near plane
        {{0, 10, 0}, 400, 300, 1.0},    // on the far plane
        {{0, 0, 10}, 400, 0, 2.0 / 3},  // 45 degrees up: the upper border of the picture
        {{10, 10, 0}, 550, 300, 1.0},   // twice as far, half as wide
    };
    for (const auto& row : rows) {
        const DPoint3D pixel = row.world * eye.GetWorldToPixel();
        EXPECT_NEAR(pixel.x, row.x, 1e-9);
        EXPECT_NEAR(pixel.y, row.y, 1e-9);
        EXPECT_NEAR(pixel.z, row.z, 1e-9);
    }
}

TEST(Camera3D, BringsPixelsToTheWorldAndBack) {
    std::mt19937 random(11);
    std::uniform_real_distribution<double> unit(0, 1);
    for (const Camera3D& camera : {Oblique(), Central()}) {
        for (int i = 0; i < 500; ++i) {
            const DPoint3D pixel(kWidth * unit(random), kHeight * unit(random), unit(random));
            const DPoint3D world = pixel * camera.GetPixelToWorld();
            const DPoint3D back = world * camera.GetWorldToPixel();
            ASSERT_NEAR(back.x, pixel.x, 1e-6);
            ASSERT_NEAR(back.y, pixel.y, 1e-6);
            ASSERT_NEAR(back.z, pixel.z, 1e-6);
            const Ray ray = camera.PixelRay(pixel.x, pixel.y);
            ASSERT_NEAR(ray.direction.Length(), 1.0, 1e-12);
            ASSERT_NEAR(Distance(world, ray), 0.0, 1e-6);
            ASSERT_GE((world - ray.origin).Dot(ray.direction), -1e-6);  // away from the eye
        }
    }
}

TEST(Camera3D, ShowsWholeBoxesAsLargeAsTheMarginAllows) {
    const FBox boxes[] = {
        {FPoint3D(-5, -1, -1), FPoint3D(5, 1, 1)},         // wide
        {FPoint3D(100, 100, 0), FPoint3D(101, 101, 300)},  // tall and off the origin
        {FPoint3D(0, 0, 0), FPoint3D(40, 40, 0)},          // flat
    };
    constexpr int kMargin = 25;
    for (const FBox& box : boxes) {
        for (const DVec3& direction : {DVec3(-1, 1, -1), DVec3(0, 1, 0), DVec3(1, 0.2, 0.3)}) {
            const auto camera =
                Camera3D::FitOrthographic(box, direction, DVec3(0, 0, 1), kWidth, kHeight, kMargin);
            double left = kWidth, right = 0, top = kHeight, bottom = 0;
            for (unsigned corner = 0; corner < 8; ++corner) {
                const DPoint3D world((corner & 1U) != 0 ? box.max.x : box.min.x,
                                     (corner & 2U) != 0 ? box.max.y : box.min.y,
                                     (corner & 4U) != 0 ? box.max.z : box.min.z);
                const DPoint3D pixel = world * camera.GetWorldToPixel();
                left = std::min(left, pixel.x);
                right = std::max(right, pixel.x);
                top = std::min(top, pixel.y);
                bottom = std::max(bottom, pixel.y);
                EXPECT_GT(pixel.z, 0.0);
                EXPECT_LT(pixel.z, 1.0);
            }
            EXPECT_NEAR(std::min(left, top), kMargin,
                        1e-3);  // one way fills the picture, the other is centred
            EXPECT_NEAR(left + right, kWidth, 1e-3);
            EXPECT_NEAR(top + bottom, kHeight, 1e-3);
        }
    }
    const auto nothing =
        Camera3D::FitOrthographic(FBox::EMPTY, DVec3(0, 1, 0), DVec3(0, 0, 1), kWidth, kHeight, 0);
    EXPECT_NEAR((DPoint3D() * nothing.GetWorldToPixel()).x, 400, 1e-9);
}

TEST(Camera3D, ComparesByWhatIsSeen) {
    Camera3D camera = Oblique();
    EXPECT_EQ(camera, Oblique());
    EXPECT_FALSE(camera == Central());
    camera.SetViewport(kWidth, kHeight + 1);
    EXPECT_FALSE(camera == Oblique());
}

}  // namespace
}  // namespace dg
