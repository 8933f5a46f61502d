#include "zrk/scene/VisibilityMap.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <random>
#include <vector>

#include "tests/host/zrk/Stage.h"
#include "zrk/scene/PickScene.h"

namespace zrk {
namespace {

using PartPtr = Stage::PartPtr;

constexpr int kSize = 48;

/// The picture as single picks see it, and what follows from it by definition.
class Picture {
public:
    explicit Picture(const Stage& stage) {
        dg::Camera3D camera;
        stage.GetView()->GetCamera(camera);
        for (int y = 0; y < kSize; ++y) {
            for (int x = 0; x < kSize; ++x) {
                const auto met = stage.GetScene()->GetPickScene()->Pick(camera.PixelRay(x, y), PICK_ALL);
                m_parts.push_back(met.empty() ? nullptr : met[0].GetObject().get());
            }
        }
        for (int y = 0; y < kSize; ++y) {
            for (int x = 0; x < kSize; ++x) Flood(x, y);
        }
    }
    const Object* At(int x, int y) const {
        const bool isInside = x >= 0 && y >= 0 && x < kSize && y < kSize;
        return isInside ? m_parts[static_cast<std::size_t>(y * kSize + x)] : nullptr;
    }
    bool Shows(const Object& part) const { return std::count(m_parts.begin(), m_parts.end(), &part) > 0; }
    /// Steps to the nearest pixel of something else, or out of the picture.
    int Depth(int px, int py) const {
        int nearest = 2 * kSize;
        for (int y = -1; y <= kSize; ++y) {
            for (int x = -1; x <= kSize; ++x) {
                if (At(x, y) != At(px, py)) nearest = std::min(nearest, std::abs(x - px) + std::abs(y - py));
            }
        }
        return nearest;
    }
    /// The number of the piece of one part that the pixel belongs to.
    std::size_t PieceAt(int x, int y) const { return m_pieces[static_cast<std::size_t>(y * kSize + x)]; }
    std::size_t SizeOf(std::size_t piece) const {
        return static_cast<std::size_t>(std::count(m_pieces.begin(), m_pieces.end(), piece));
    }

private:
    void Flood(int startX, int startY) {
        std::vector<std::pair<int, int>> pending{{startX, startY}};
        const std::size_t piece = ++m_lastPiece;
        while (!pending.empty()) {
            const auto [x, y] = pending.back();
            pending.pop_back();
            const bool isInside = x >= 0 && y >= 0 && x < kSize && y < kSize;
            if (!isInside || At(x, y) != At(startX, startY) || PieceAt(x, y) != 0) continue;
            m_pieces[static_cast<std::size_t>(y * kSize + x)] = piece;
            pending.insert(pending.end(), {{x - 1, y}, {x + 1, y}, {x, y - 1}, {x, y + 1}});
        }
    }

    std::vector<std::size_t> m_pieces = std::vector<std::size_t>(std::size_t{kSize} * kSize);
    std::size_t m_lastPiece = 0;
    std::vector<const Object*> m_parts;
};

TEST(VisibilityMap, KeepsItsPromisesOnRandomScenes) {
    for (const unsigned seed : {1U, 2U, 3U, 4U}) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::uniform_real_distribution<float> place(-26, 20), size(2, 26);
        Stage stage;
        const auto camera =
            dg::Camera3D::Orthographic({0, 0, 0}, {0, 0, -1}, {0, 1, 0}, 1, kSize, kSize, 100);
        stage.GetView()->SetCamera(camera);
        std::vector<PartPtr> parts;
        for (int i = 0; i < 9; ++i) {
            parts.push_back(
                stage.AddBox("p", place(random), place(random), 2 * i, {size(random), size(random), 1}));
        }
        const Picture picture(stage);
        const auto map = stage.GetView()->GetVisibilityMap();
        for (const PartPtr& part : parts) {
            const VisibleSpot* const spot = map->Find(*part);
            ASSERT_EQ(spot != nullptr, picture.Shows(*part));
            if (spot == nullptr) continue;
            ASSERT_EQ(picture.At(spot->x, spot->y), part.get());
            const dg::DPoint3D pixel = spot->world * camera.GetWorldToPixel();
            EXPECT_NEAR(std::hypot(pixel.x - spot->x, pixel.y - spot->y), 0.0, 1e-4);
            dg::Location location;
            part->GetLocation(location);
            EXPECT_NEAR(spot->world.z, location.GetPos().z + 1.0, 1e-4) << "on the upper side";
            const std::size_t piece = picture.PieceAt(spot->x, spot->y);
            EXPECT_EQ(spot->area, picture.SizeOf(piece));
            EXPECT_EQ(spot->depth, picture.Depth(spot->x, spot->y));
            for (int y = 0; y < kSize; ++y) {
                for (int x = 0; x < kSize; ++x) {
                    if (picture.At(x, y) != part.get()) continue;
                    ASSERT_LE(picture.SizeOf(picture.PieceAt(x, y)), spot->area);  // no larger piece anywhere
                    if (picture.PieceAt(x, y) != piece) continue;
                    const bool comesFirst = y < spot->y || (y == spot->y && x < spot->x);
                    ASSERT_LT(picture.Depth(x, y),
                              spot->depth + (comesFirst ? 0 : 1));  // ties: by row, then column
                }
            }
        }
    }
}

}  // namespace
}  // namespace zrk
