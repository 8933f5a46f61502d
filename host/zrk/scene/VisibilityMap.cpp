#include "zrk/scene/VisibilityMap.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <vector>

namespace zrk {
namespace {

using Ids = std::vector<std::uint32_t>;

constexpr std::uint32_t kNothing = zrg::RayHit::kNothing;

/// The placement seen at each pixel.
Ids CastIds(const zrg::RayScene& rays, const dg::Camera3D& camera, std::size_t width, std::size_t height) {
    Ids ids(width * height, kNothing);
    std::vector<zrg::RayHit> row(width);
    for (std::size_t y = 0; y < height; ++y) {
        rays.NearestRow(camera, 0.0, static_cast<double>(y), 1.0, row);
        std::transform(row.begin(), row.end(), ids.begin() + static_cast<std::ptrdiff_t>(y * width),
                       [](const zrg::RayHit& hit) { return hit.placement; });
    }
    return ids;
}

/// For each pixel the number of steps (sideways, up or down) to the nearest pixel of another part; the
/// picture's border counts as one. Two sweeps.
std::vector<int> BorderDistances(const Ids& ids, std::size_t width, std::size_t height) {
    std::vector<int> distances(ids.size());
    const auto relax = [&](std::size_t pixel, std::size_t neighbour) {
        const int through = ids[pixel] == ids[neighbour] ? distances[neighbour] + 1 : 1;
        distances[pixel] = std::min(distances[pixel], through);
    };
    for (std::size_t y = 0; y < height; ++y) {
        for (std::size_t x = 0; x < width; ++x) {
            const std::size_t pixel = y * width + x;
            const bool isBorder = x == 0 || y == 0 || x + 1 == width || y + 1 == height;
            distances[pixel] = isBorder ? 1 : std::numeric_limits<int>::max();
            if (x > 0) relax(pixel, pixel - 1);
            if (y > 0) relax(pixel, pixel - width);
        }
    }
    for (std::size_t pixel = ids.size(); pixel-- > 0;) {
        if (pixel % width + 1 < width) relax(pixel, pixel + 1);
        if (pixel + width < ids.size()) relax(pixel, pixel + width);
    }
    return distances;
}

/// A connected area of one part: its size and deepest pixel.
struct Area {
    std::size_t size = 0;
    std::size_t deepest = 0;
};

/// Visits the area that `start` belongs to and marks it as seen.
Area Flood(const Ids& ids, const std::vector<int>& distances, std::size_t width, std::size_t start,
           std::vector<bool>& seen, std::vector<std::size_t>& pending) {
    Area area{0, start};
    pending.assign(1, start);
    seen[start] = true;
    const auto enter = [&](std::size_t from, std::size_t to) {
        if (seen[to] || ids[to] != ids[from]) return;
        seen[to] = true;
        pending.push_back(to);
    };
    while (!pending.empty()) {
        const std::size_t pixel = pending.back();
        pending.pop_back();
        ++area.size;
        const bool isDeeper = distances[pixel] > distances[area.deepest];
        if (isDeeper || (distances[pixel] == distances[area.deepest] && pixel < area.deepest))
            area.deepest = pixel;
        if (pixel % width > 0) enter(pixel, pixel - 1);
        if (pixel % width + 1 < width) enter(pixel, pixel + 1);
        if (pixel >= width) enter(pixel, pixel - width);
        if (pixel + width < ids.size()) enter(pixel, pixel + width);
    }
    return area;
}

/// The largest area of each placement; the first met of equal ones.
std::vector<Area> LargestAreas(const Ids& ids, const std::vector<int>& distances, std::size_t width,
                               std::size_t placements) {
    std::vector<Area> largest(placements);
    std::vector<bool> seen(ids.size());
    std::vector<std::size_t> pending;
    for (std::size_t pixel = 0; pixel < ids.size(); ++pixel) {
        if (ids[pixel] == kNothing || seen[pixel]) continue;
        const Area area = Flood(ids, distances, width, pixel, seen, pending);
        if (area.size > largest[ids[pixel]].size) largest[ids[pixel]] = area;
    }
    return largest;
}

}  // namespace

VisibilityMap::VisibilityMap(const PickScene& scene, const dg::Camera3D& camera) {
    const auto width = static_cast<std::size_t>(std::max(camera.GetViewportWidth(), 0));
    const auto height = static_cast<std::size_t>(std::max(camera.GetViewportHeight(), 0));
    if (width == 0 || height == 0) return;
    const Ids ids = CastIds(scene.GetRays(), camera, width, height);
    const std::vector<int> distances = BorderDistances(ids, width, height);
    const std::vector<Area> areas = LargestAreas(ids, distances, width, scene.GetParts().size());
    for (std::size_t i = 0; i < areas.size(); ++i) {
        if (areas[i].size == 0) continue;
        const std::size_t pixel = areas[i].deepest;
        VisibleSpot spot{static_cast<int>(pixel % width),
                         static_cast<int>(pixel / width),
                         {},
                         areas[i].size,
                         distances[pixel]};
        const auto hit =
            scene.GetRays().NearestOf(camera.PixelRay(spot.x, spot.y), static_cast<std::uint32_t>(i));
        if (!hit) continue;
        spot.world = hit.point;
        m_spots.emplace(scene.GetParts()[i].get(), spot);
    }
}

const VisibleSpot* VisibilityMap::Find(const ShapeInstance& part) const {
    const auto entry = m_spots.find(&part);
    return entry != m_spots.end() ? &entry->second : nullptr;
}

}  // namespace zrk
