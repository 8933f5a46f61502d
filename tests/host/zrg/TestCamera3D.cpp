#include "dg/Camera3D.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace dg
