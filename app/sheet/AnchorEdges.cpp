#include "app/sheet/AnchorEdges.h"

#include <numeric>

#include "app/render/EdgeRule.h"
#include "app/render/SurfaceSampler.h"

namespace zrsheet {
namespace {

constexpr int kWindow = 3;  // pixels, with the anchor in the middle
constexpr double kSamplesPerPixel = 2.0;

/// Is the line between two samples one of the part, and not of what stands before it?
bool IsOwn(std::uint32_t placement, const SurfaceSample& a, const SurfaceSample& b) {
    if (a.placement == placement) return b.placement == placement || b.depth >= a.depth;
    return b.placement == placement && a.depth >= b.depth;
}

}  // namespace

AnchorEdges::AnchorEdges(const zrk::PickScene& scene) : m_scene(scene), m_numbers(scene.GetParts().size()) {
    std::iota(m_numbers.begin(), m_numbers.end(), 0U);
    for (const std::uint32_t number : m_numbers) m_placements[scene.GetParts()[number].get()] = number;
}

bool AnchorEdges::IsShown(const zrk::ShapeInstance& part) const { return m_placements.contains(&part); }

bool AnchorEdges::IsOnEdge(const zrk::ShapeInstance& part, const dg::Camera3D& camera,
                           const dg::DPoint3D& pixel) const {
    const auto placement = m_placements.find(&part);
    if (placement == m_placements.end()) return false;
    constexpr double kMiddle = 0.5 * kWindow;
    dg::Camera3D window = camera.Magnified(pixel, {kMiddle, kMiddle, 0.0}, 1.0);
    window.SetViewport(kWindow, kWindow);
    const SurfaceSampler sampler(m_scene.GetRays(), window, m_numbers, kSamplesPerPixel);
    const EdgeRule rule(sampler, m_style);
    std::vector<SurfaceSample> above;
    std::vector<SurfaceSample> row(static_cast<std::size_t>(sampler.GetWidth()));
    const auto isLine = [&](const SurfaceSample& a, const SurfaceSample& b, int x, int y, bool isVertical) {
        return IsOwn(placement->second, a, b) && rule.LineWidth(a, b, x, y, isVertical) > 0.0;
    };
    for (int y = 0; y < sampler.GetHeight(); ++y) {
        sampler.SampleRow(y, 0, row);
        for (std::size_t i = 0; i < row.size(); ++i) {
            const int x = static_cast<int>(i);
            if (i > 0 && isLine(row[i - 1], row[i], x - 1, y, false)) return true;
            if (y > 0 && isLine(above[i], row[i], x, y - 1, true)) return true;
        }
        above = row;
    }
    return false;
}

}  // namespace zrsheet
