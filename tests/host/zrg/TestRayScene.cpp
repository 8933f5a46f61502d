#include "zrg/RayScene.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <memory>
#include <random>
#include <vector>

namespace zrg {
namespace {

using ShapePtr = du::SmartPtr<Shape>;

/// The unit square in the plane z = 0, facing +z.
ShapePtr Square() { return new Shape({0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0}, {0, 1, 2, 0, 2, 3}); }

dg::Location At(double x, double y, double z, const dg::FVec3& scale = {1, 1, 1}) {
    return {dg::FMat33::Scale(scale), dg::DPoint3D(x, y, z)};
}

/// Straight down onto (x, y) from a height of 100.
dg::Ray Down(double x, double y) { return {dg::DPoint3D(x, y, 100), dg::DVec3(0, 0, -1)}; }

TEST(RayScene, MeetsOnlyPlacementsThatShareABitOfTheMask) {
    RayScene scene;
    const ShapePtr square = Square();
    scene.Add(square, At(0, 0, 9), 0x2);
    scene.Add(square, At(0, 0, 5), 0x1);
    scene.Add(square, At(0, 0, 1), 0x4);
    scene.Commit();
    const struct {
        std::uint32_t mask;
        std::uint32_t placement;
    } rows[] = {{RayScene::kEverything, 0U}, {0x1, 1U}, {0x4, 2U}, {0x5, 1U}, {0x3, 0U},
                {0x8, RayHit::kNothing}};
    const auto above = dg::Camera3D::Orthographic({0.5, 0.5, 0}, {0, 0, -1}, {0, 1, 0}, 10, 10, 10, 50);
    for (const auto& row : rows) {
        EXPECT_EQ(scene.Nearest(Down(0.5, 0.4), row.mask).placement, row.placement) << row.mask;
        std::array<RayHit, 1> hits;
        scene.NearestRow(above, 5, 6, 1, hits, row.mask);
        EXPECT_EQ(hits[0].placement, row.placement) << row.mask;
    }
}

// More shapes than one thread builds; half of them are new, in another order, and the former scene is gone by
// then.
TEST(RayScene, UsesShapesOfAFormerSceneAgain) {
    std::vector<ShapePtr> shapes;
    for (int i = 0; i < 300; ++i) shapes.push_back(Square());
    auto former = std::make_unique<RayScene>();
    for (std::size_t i = 0; i < 150; ++i) former->Add(shapes[i], At(2.0 * static_cast<double>(i), 0, 0));
    former->Commit();
    RayScene scene(former.get());
    for (std::size_t i = 300; i-- > 0;) scene.Add(shapes[i], At(2.0 * static_cast<double>(i), 7, 0));
    scene.Commit();
    former.reset();
    for (std::uint32_t i = 0; i < 300; ++i) {
        EXPECT_EQ(scene.Nearest(Down(2.0 * i + 0.5, 7.4)).placement, 299 - i);
        EXPECT_FALSE(scene.Nearest(Down(2.0 * i + 0.5, 0.4)));
    }
}

/// A triangle in world coordinates and whose it is.
struct Triangle {
    std::uint32_t placement;
    std::uint32_t index;
    std::array<dg::DPoint3D, 3> corners;
};

/// The distance along the ray, or infinity (Moeller and Trumbore).
double Meet(const dg::Ray& ray, const Triangle& triangle) {
    constexpr double kNever = std::numeric_limits<double>::infinity();
    const dg::DVec3 a = triangle.corners[1] - triangle.corners[0];
    const dg::DVec3 b = triangle.corners[2] - triangle.corners[0];
    const dg::DVec3 p = ray.direction.Cross(b);
    const double determinant = a.Dot(p);
    if (determinant == 0.0) return kNever;
    const dg::DVec3 s = ray.origin - triangle.corners[0];
    const dg::DVec3 q = s.Cross(a);
    const double u = s.Dot(p) / determinant;
    const double v = ray.direction.Dot(q) / determinant;
    const double t = b.Dot(q) / determinant;
    return u >= 0 && v >= 0 && u + v <= 1 && t >= 0 ? t : kNever;
}

/// Random triangle soups, each placed several times with random affine maps; known in world coordinates too.
class RandomScene {
public:
    explicit RandomScene(unsigned seed) : m_random(seed) {
        for (int shape = 0; shape < 5; ++shape) {
            const ShapePtr soup = Soup();
            for (int copy = 0; copy < 4; ++copy) Place(soup);
        }
        m_scene.Commit();
    }
    const RayScene& Rays() const { return m_scene; }

    /// By looking at every triangle.
    std::pair<const Triangle*, double> NearestByHand(const dg::Ray& ray) const {
        std::pair<const Triangle*, double> nearest{nullptr, std::numeric_limits<double>::infinity()};
        for (const Triangle& triangle : m_triangles) {
            const double distance = Meet(ray, triangle);
            if (distance < nearest.second) nearest = {&triangle, distance};
        }
        return nearest;
    }

private:
    float Between(float low, float high) {
        return std::uniform_real_distribution<float>(low, high)(m_random);
    }

    ShapePtr Soup() {
        std::vector<float> positions;
        std::vector<std::uint32_t> indices;
        for (std::uint32_t i = 0; i < 30; ++i) {
            for (int k = 0; k < 3; ++k) positions.push_back(Between(-5, 5));
            indices.push_back(i);
        }
        return new Shape(positions, indices);
    }

    void Place(const ShapePtr& shape) {
        std::array<float, 9> linear{};
        for (float& value : linear) value = Between(-2, 2);
        const dg::Location location(dg::FMat33(linear),
                                    dg::DPoint3D(Between(-20, 20), Between(-20, 20), Between(-20, 20)));
        const std::uint32_t placement = m_scene.Add(shape, location);
        const auto positions = shape->GetPositions();
        for (std::uint32_t t = 0; t < shape->GetTriangleCount(); ++t) {
            Triangle triangle{placement, t, {}};
            for (std::size_t k = 0; k < 3; ++k) {
                const std::size_t at = 3 * shape->GetIndices()[3 * t + k];
                triangle.corners[k] =
                    dg::DPoint3D(positions[at], positions[at + 1], positions[at + 2]) * location;
            }
            m_triangles.push_back(triangle);
        }
    }

    std::mt19937 m_random;
    RayScene m_scene;
    std::vector<Triangle> m_triangles;
};

// Rows, single rays and looking at every triangle must tell the same story, pixel by pixel, in both
// projections.
TEST(RayScene, AgreesWithEveryTriangleLookedAtByHand) {
    const RandomScene random(20);
    constexpr int kWidth = 150;  // more than one packet of rays
    constexpr int kHeight = 30;
    const dg::Camera3D cameras[] = {
        dg::Camera3D::Orthographic({0, 0, 0}, {1, 2, -1}, {0, 0, 1}, 3.0, kWidth, kHeight, 200),
        dg::Camera3D::Perspective({60, -50, 40}, {0, 0, 0}, {0, 0, 1}, 0.7, 1, 500, kWidth, kHeight)};
    int met = 0;
    int disputed = 0;  // within rounding of an edge, where single precision may see it otherwise
    for (const auto& camera : cameras) {
        for (int y = 0; y < kHeight; ++y) {
            std::array<RayHit, kWidth> row;
            random.Rays().NearestRow(camera, 0.25, y, 1.0, row);
            for (int x = 0; x < kWidth; ++x) {
                const dg::Ray ray = camera.PixelRay(x + 0.25, y);
                const auto [triangle, distance] = random.NearestByHand(ray);
                const RayHit hit = random.Rays().Nearest(ray);
                const RayHit& packed = row[static_cast<std::size_t>(x)];
                met += hit ? 1 : 0;
                const bool sameAsHand =
                    static_cast<bool>(hit) == (triangle != nullptr) &&
                    (!hit || (hit.placement == triangle->placement && hit.triangle == triangle->index));
                const bool sameAsRow = packed.placement == hit.placement && packed.triangle == hit.triangle;
                disputed += sameAsHand && sameAsRow ? 0 : 1;
                if (!sameAsHand || !hit) continue;
                ASSERT_NEAR(hit.distance, distance, 1e-3);
                ASSERT_LT((hit.point - (ray.origin + ray.direction * distance)).Length(), 1e-3);
                const RayHit alone = random.Rays().NearestOf(ray, hit.placement);
                ASSERT_NEAR(alone.distance, distance, 1e-3);
            }
        }
    }
    EXPECT_GT(met, 2000);
    EXPECT_LE(disputed, 2 * kWidth * kHeight / 1000);
}

}  // namespace
}  // namespace zrg
