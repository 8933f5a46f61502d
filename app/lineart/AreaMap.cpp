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

constexpr double kTolerance = 0.3;  // pixels; evens out the steps of the grid
constexpr double kSpeck = 1.0;      // square pixels

double RingArea(const std::vector<ArtPoint>& ring) {
    double sum = 0.0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const ArtPoint& a = ring[i];
        const ArtPoint& b = ring[(i + 1) % ring.size()];
        sum += a.x * b.y - a.y * b.x;
    }
    return 0.5 * std::abs(sum);
}

/// Walks around areas along the sides of samples, the area on the right hand.
class Tracer {
public:
    explicit Tracer(const PartRaster& raster)
        : m_raster(raster),
          m_isTopDone(static_cast<std::size_t>(raster.Width()) * static_cast<std::size_t>(raster.Height()),
                      false) {}

    /// Does an area begin below the side between this sample and the one above, not yet walked along?
    bool BeginsAt(int x, int y) const {
        const std::uint32_t placement = m_raster.At(x, y);
        return placement != PartRaster::kGround && m_raster.At(x, y - 1) != placement &&
               !m_isTopDone[IndexOf(x, y)];
    }

    /// The middles of the sides, which has no steps where the area ends aslant.
    std::vector<ArtPoint> Walk(int startX, int startY) {
        const std::uint32_t placement = m_raster.At(startX, startY);
        std::vector<ArtPoint> ring;
        int x = startX;  // the corner that the walk stands on
        int y = startY;
        int direction = 0;  // right, down, left, up
        do {
            constexpr std::array<int, 4> kX{1, 0, -1, 0};
            constexpr std::array<int, 4> kY{0, 1, 0, -1};
            const auto d = static_cast<std::size_t>(direction);
            if (direction == 0) m_isTopDone[IndexOf(x, y)] = true;
            ring.push_back({(x + 0.5 * kX[d]) / m_raster.Samples(), (y + 0.5 * kY[d]) / m_raster.Samples()});
            x += kX[d];
            y += kY[d];
            // The samples ahead on both hands.
            const auto right = static_cast<std::size_t>((direction + 1) % 4);
            const int middleX = x + (kX[d] + kX[right] - 1) / 2;
            const int middleY = y + (kY[d] + kY[right] - 1) / 2;
            const bool isRight = m_raster.At(middleX, middleY) == placement;
            const bool isLeft = m_raster.At(middleX - kX[right], middleY - kY[right]) == placement;
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
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_raster.Width()) +
               static_cast<std::size_t>(x);
    }

    const PartRaster& m_raster;
    std::vector<bool> m_isTopDone;
};

}  // namespace

std::vector<double> AreaSizes(const PartRaster& raster, std::size_t count) {
    const double share = 1.0 / (raster.Samples() * raster.Samples());
    std::vector<double> sizes(count, 0.0);
    for (int y = 0; y < raster.Height(); ++y) {
        const auto row = raster.Row(y);
        for (auto x = row.begin(); x != row.end();) {
            const auto first = x;
            while (x != row.end() && *x == *first) ++x;
            if (*first != PartRaster::kGround) sizes[*first] += share * static_cast<double>(x - first);
        }
    }
    return sizes;
}

std::vector<VisibleArea> AreaOutlines(const PartRaster& raster, std::size_t count, unsigned threads) {
    std::vector<VisibleArea> areas(count);
    for (std::uint32_t i = 0; i < count; ++i) areas[i].placement = i;
    Tracer tracer(raster);
    for (int y = 0; y < raster.Height(); ++y) {
        const auto row = raster.Row(y);
        for (int x = 0; x < raster.Width(); ++x) {
            const std::uint32_t part = row[static_cast<std::size_t>(x)];
            if (part == PartRaster::kGround || !tracer.BeginsAt(x, y)) continue;
            std::vector<ArtPoint> ring = tracer.Walk(x, y);
            if (RingArea(ring) >= kSpeck) areas[part].rings.push_back(std::move(ring));
        }
    }
    ParallelFor(count, threads, [&areas](std::size_t i) {
        for (std::vector<ArtPoint>& ring : areas[i].rings) {
            ring.push_back(ring.front());
            ring = Simplified(ring, kTolerance);
            ring.pop_back();
        }
    });
    std::erase_if(areas, [](const VisibleArea& area) { return area.rings.empty(); });
    return areas;
}

}  // namespace zrsheet
