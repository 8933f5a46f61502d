#include "app/lineart/AreaMap.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

#include "app/lineart/ArtPath.h"
#include "app/render/ParallelFor.h"

namespace zrsheet {
namespace {

constexpr int kSamples = 2;  // per pixel and axis
constexpr int kBlock = 8;    // samples along a block's side
constexpr double kBlockPixels = static_cast<double>(kBlock) / kSamples;
constexpr double kReach = 1.0;      // pixels around a line where areas may end
constexpr double kTolerance = 0.3;  // pixels; evens out the steps of the grid
constexpr double kSpeck = 1.0;      // square pixels

double PixelOf(int sample) { return (sample + 0.5) / kSamples; }

double RingArea(const std::vector<ArtPoint>& ring) {
    double sum = 0.0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const ArtPoint& a = ring[i];
        const ArtPoint& b = ring[(i + 1) % ring.size()];
        sum += a.x * b.y - a.y * b.x;
    }
    return 0.5 * std::abs(sum);
}

std::vector<bool> BlocksWithLines(std::span<const SeenPiece> pieces, int columns, int rows) {
    std::vector<bool> blocks(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows), false);
    const auto block = [](double pixel, int count) {
        return std::clamp(static_cast<int>(std::floor(pixel / kBlockPixels)), 0, count - 1);
    };
    for (const SeenPiece& piece : pieces) {
        const ArtPath path(piece.points);
        const int steps = static_cast<int>(path.Length()) + 1;
        for (int i = 0; i <= steps; ++i) {
            const ArtPoint point = path.At(path.Length() * i / steps);
            for (int y = block(point.y - kReach, rows); y <= block(point.y + kReach, rows); ++y) {
                for (int x = block(point.x - kReach, columns); x <= block(point.x + kReach, columns); ++x)
                    blocks[static_cast<std::size_t>(y) * static_cast<std::size_t>(columns) +
                           static_cast<std::size_t>(x)] = true;
            }
        }
    }
    return blocks;
}

}  // namespace

AreaMap::AreaMap(const zrg::RayScene& scene, const dg::Camera3D& camera, std::span<const SeenPiece> pieces,
                 unsigned threads)
    : m_width(kSamples * camera.GetViewportWidth()),
      m_height(kSamples * camera.GetViewportHeight()),
      m_blocks((m_width + kBlock - 1) / kBlock),
      m_count(scene.GetPlacementCount()),
      m_placements(static_cast<std::size_t>(m_width) * static_cast<std::size_t>(m_height), kGround) {
    const int rows = (m_height + kBlock - 1) / kBlock;
    const std::vector<bool> hasLine = BlocksWithLines(pieces, m_blocks, rows);
    ParallelFor(static_cast<std::size_t>(rows), threads,
                [&](std::size_t row) { FillRow(scene, camera, static_cast<int>(row), hasLine); });
}

void AreaMap::FillRow(const zrg::RayScene& scene, const dg::Camera3D& camera, int blockRow,
                      const std::vector<bool>& hasLine) {
    const int top = blockRow * kBlock;
    std::vector<zrg::RayHit> upper(static_cast<std::size_t>(m_blocks) + 1);
    std::vector<zrg::RayHit> lower(upper.size());
    scene.NearestRow(camera, PixelOf(0), PixelOf(top), kBlockPixels, upper);
    scene.NearestRow(camera, PixelOf(0), PixelOf(top + kBlock), kBlockPixels, lower);
    const auto isPlain = [&](int block) {
        const auto i = static_cast<std::size_t>(block);
        const std::uint32_t first = upper[i].placement;
        return !hasLine[static_cast<std::size_t>(blockRow) * static_cast<std::size_t>(m_blocks) + i] &&
               upper[i + 1].placement == first && lower[i].placement == first &&
               lower[i + 1].placement == first;
    };
    // Blocks side by side that must be asked closely are asked together.
    for (int block = 0; block < m_blocks;) {
        const int from = block++;
        const bool isFirstPlain = isPlain(from);
        while (!isFirstPlain && block < m_blocks && !isPlain(block)) ++block;
        const int left = from * kBlock;
        const auto width = static_cast<std::size_t>(std::min(block * kBlock, m_width) - left);
        std::vector<zrg::RayHit> hits(isFirstPlain ? 0 : width);
        for (int y = top; y < std::min(top + kBlock, m_height); ++y) {
            auto* row = &m_placements[static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width) +
                                      static_cast<std::size_t>(left)];
            if (isFirstPlain) {
                std::fill_n(row, width, upper[static_cast<std::size_t>(from)].placement);
                continue;
            }
            scene.NearestRow(camera, PixelOf(left), PixelOf(y), 1.0 / kSamples, hits);
            std::transform(hits.begin(), hits.end(), row, [](const auto& hit) { return hit.placement; });
        }
    }
}

std::vector<double> AreaMap::Sizes() const {
    std::vector<double> sizes(m_count, 0.0);
    for (const std::uint32_t placement : m_placements) {
        if (placement != kGround) sizes[placement] += 1.0 / (kSamples * kSamples);
    }
    return sizes;
}

/// Walks around areas along the sides of samples, the area on the right hand.
class AreaMap::Tracer {
public:
    explicit Tracer(const AreaMap& map) : m_map(map), m_isTopDone(map.m_placements.size(), false) {}

    /// Does an area begin below the side between this sample and the one above, not yet walked along?
    bool BeginsAt(int x, int y) const {
        const std::uint32_t placement = m_map.At(x, y);
        return placement != kGround && m_map.At(x, y - 1) != placement && !m_isTopDone[IndexOf(x, y)];
    }

    /// The middles of the sides, which has no steps where the area ends aslant.
    std::vector<ArtPoint> Walk(int startX, int startY) {
        const std::uint32_t placement = m_map.At(startX, startY);
        std::vector<ArtPoint> ring;
        int x = startX;  // the corner that the walk stands on
        int y = startY;
        int direction = 0;  // right, down, left, up
        do {
            constexpr std::array<int, 4> kX{1, 0, -1, 0};
            constexpr std::array<int, 4> kY{0, 1, 0, -1};
            const auto d = static_cast<std::size_t>(direction);
            if (direction == 0) m_isTopDone[IndexOf(x, y)] = true;
            ring.push_back({(x + 0.5 * kX[d]) / kSamples, (y + 0.5 * kY[d]) / kSamples});
            x += kX[d];
            y += kY[d];
            // The samples ahead on both hands.
            const auto right = static_cast<std::size_t>((direction + 1) % 4);
            const int middleX = x + (kX[d] + kX[right] - 1) / 2;
            const int middleY = y + (kY[d] + kY[right] - 1) / 2;
            const bool isRight = m_map.At(middleX, middleY) == placement;
            const bool isLeft = m_map.At(middleX - kX[right], middleY - kY[right]) == placement;
            if (!isRight) {
                direction = (direction + 1) % 4;
            } else if (isLeft) {
                direction = (direction + 3) % 4;
            }
        } while (x != startX || y != startY || direction != 0);
        return ring;
    }

private:
    std::size_t IndexOf(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_map.m_width) +
               static_cast<std::size_t>(x);
    }

    const AreaMap& m_map;
    std::vector<bool> m_isTopDone;
};

std::vector<VisibleArea> AreaMap::Outlines() const {
    std::vector<VisibleArea> areas(m_count);
    for (std::uint32_t i = 0; i < m_count; ++i) areas[i].placement = i;
    Tracer tracer(*this);
    for (int y = 0; y < m_height; ++y) {
        for (int x = 0; x < m_width; ++x) {
            if (!tracer.BeginsAt(x, y)) continue;
            std::vector<ArtPoint> ring = tracer.Walk(x, y);
            if (RingArea(ring) < kSpeck) continue;
            ring.push_back(ring.front());
            ring = Simplified(ring, kTolerance);
            ring.pop_back();
            areas[At(x, y)].rings.push_back(std::move(ring));
        }
    }
    std::erase_if(areas, [](const VisibleArea& area) { return area.rings.empty(); });
    return areas;
}

}  // namespace zrsheet
