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
