#include "callouts/align/optimal/ScreenGeometry.h"

#include <algorithm>

namespace zrcallouts {
namespace {

double Distance(const ScreenPoint& point, const ScreenSegment& segment) {
    const double x = segment.to.x - segment.from.x;
    const double y = segment.to.y - segment.from.y;
    const double square = x * x + y * y;
    const double along = (point.x - segment.from.x) * x + (point.y - segment.from.y) * y;
    const double share = square > 0.0 ? std::clamp(along / square, 0.0, 1.0) : 0.0;
    return Distance(point, ScreenPoint{segment.from.x + share * x, segment.from.y + share * y});
}

/// Cuts what lies outside of the box along one axis off `first` to `last`, shares of the segment.
void Clip(double from, double way, double least, double greatest, double& first, double& last) {
    if (way == 0.0) {
        if (from <= least || from >= greatest) last = first;
        return;
    }
    const double a = (least - from) / way;
    const double b = (greatest - from) / way;
    first = std::max(first, std::min(a, b));
    last = std::min(last, std::max(a, b));
}

}  // namespace

ScreenBox ScreenSegment::Box() const {
    return {std::min(from.x, to.x), std::min(from.y, to.y), std::max(from.x, to.x), std::max(from.y, to.y)};
}

double Distance(const ScreenSegment& a, const ScreenSegment& b) {
    if (DoCross(a, b)) return 0.0;
    return std::min({Distance(a.from, b), Distance(a.to, b), Distance(b.from, a), Distance(b.to, a)});
}

bool IsInside(const ScreenSegment& segment, const ScreenBox& box) {
    double first = 0.0;
    double last = 1.0;
    Clip(segment.from.x, segment.to.x - segment.from.x, box.x0, box.x1, first, last);
    Clip(segment.from.y, segment.to.y - segment.from.y, box.y0, box.y1, first, last);
    return first < last;
}

}  // namespace zrcallouts
