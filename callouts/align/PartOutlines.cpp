#include "callouts/align/PartOutlines.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <span>
#include <utility>

#include "zrg/Shape.h"

namespace zrcallouts {
namespace {

/// Calls `use` with the pixels of a part's vertices; with nothing for parts that are not shown.
template <class Use>
void VisitVertices(const zrk::ShapeInstance& part, const dg::DMat44& worldToPixel, const Use& use) {
    const auto shape = part.GetShape();
    const zrg::Shape* data = shape ? shape->GetShapeData() : nullptr;
    if (data == nullptr || !part.IsVisible()) return;
    dg::Location location;
    part.GetLocation(location);
    const dg::DMat44 toPixel = location.GetXform() * worldToPixel;
    const std::span<const float> positions = data->GetPositions();
    for (std::size_t i = 0; i + 2 < positions.size(); i += 3) {
        const dg::DPoint3D vertex(static_cast<double>(positions[i]), static_cast<double>(positions[i + 1]),
                                  static_cast<double>(positions[i + 2]));
        const dg::DPoint3D pixel = vertex * toPixel;
        use(ScreenPoint{pixel.x, pixel.y});
    }
}

/// Andrew's monotone chain.
std::vector<ScreenPoint> ConvexHull(std::vector<ScreenPoint> points) {
    std::sort(points.begin(), points.end(),
              [](const auto& a, const auto& b) { return std::pair(a.x, a.y) < std::pair(b.x, b.y); });
    points.erase(std::unique(points.begin(), points.end()), points.end());
    if (points.size() < 3) return points;
    std::vector<ScreenPoint> hull;
    for (int side = 0; side < 2; ++side) {
        const std::size_t start = hull.size();
        for (const ScreenPoint& point : points) {
            while (hull.size() >= start + 2 && Turn(hull[hull.size() - 2], hull.back(), point) <= 0.0)
                hull.pop_back();
            hull.push_back(point);
        }
        hull.pop_back();
        std::reverse(points.begin(), points.end());
    }
    return hull;
}

}  // namespace

std::vector<ModelArea> OutlinesOfParts(const zrk::ShapeScene& scene, const dg::DMat44& worldToPixel) {
    std::vector<ModelArea> outlines;
    for (const auto& part : scene.GetShapeInstances()) {
        std::vector<ScreenPoint> points;
        VisitVertices(*part, worldToPixel, [&points](const ScreenPoint& pixel) { points.push_back(pixel); });
        if (points.empty()) continue;
        const auto [left, right] = std::minmax_element(
            points.begin(), points.end(), [](const auto& a, const auto& b) { return a.x < b.x; });
        const auto [top, bottom] = std::minmax_element(
            points.begin(), points.end(), [](const auto& a, const auto& b) { return a.y < b.y; });
        const ScreenBox box{left->x, top->y, right->x, bottom->y};
        outlines.push_back({box, {ConvexHull(std::move(points))}});
    }
    return outlines;
}

ScreenBox BoxOfParts(const zrk::ShapeScene& scene, const dg::DMat44& worldToPixel, const ScreenBox& none) {
    constexpr double kFar = std::numeric_limits<double>::infinity();
    ScreenBox box{kFar, kFar, -kFar, -kFar};
    for (const auto& part : scene.GetShapeInstances()) {
        VisitVertices(*part, worldToPixel, [&box](const ScreenPoint& pixel) {
            box = {std::min(box.x0, pixel.x), std::min(box.y0, pixel.y), std::max(box.x1, pixel.x),
                   std::max(box.y1, pixel.y)};
        });
    }
    return box.x0 <= box.x1 ? box : none;
}

}  // namespace zrcallouts
