// Points and boxes on the screen, as the layout reckons with them.

#pragma once

#include <algorithm>
#include <cmath>

#include "callouts/ZrcalloutsExport.h"

namespace zrcallouts {

/// In pixels of the view, y downwards.
struct ScreenPoint {
    double x = 0.0;
    double y = 0.0;

    [[nodiscard]] double& operator[](int axis) { return axis == 0 ? x : y; }
    [[nodiscard]] double operator[](int axis) const { return axis == 0 ? x : y; }
    friend bool operator==(const ScreenPoint&, const ScreenPoint&) = default;
};

struct ScreenBox {
    double x0 = 0.0;
    double y0 = 0.0;
    double x1 = 0.0;
    double y1 = 0.0;

    [[nodiscard]] double Least(int axis) const { return axis == 0 ? x0 : y0; }
    [[nodiscard]] double Greatest(int axis) const { return axis == 0 ? x1 : y1; }
    [[nodiscard]] double Middle(int axis) const { return 0.5 * (Least(axis) + Greatest(axis)); }
    [[nodiscard]] double Length(int axis) const { return Greatest(axis) - Least(axis); }
    [[nodiscard]] bool Holds(const ScreenBox& other) const {
        return x0 <= other.x0 && y0 <= other.y0 && x1 >= other.x1 && y1 >= other.y1;
    }
    /// Whether less than `gap` lies between them, along both axes. Boxes that only touch do not overlap.
    [[nodiscard]] bool Overlaps(const ScreenBox& other, double gap = 0.0) const {
        return x0 < other.x1 + gap && other.x0 < x1 + gap && y0 < other.y1 + gap && other.y0 < y1 + gap;
    }
};

/// Makes `box` just so large that it holds `other`, too.
inline void Enclose(ScreenBox& box, const ScreenBox& other) {
    box = {std::min(box.x0, other.x0), std::min(box.y0, other.y0), std::max(box.x1, other.x1),
           std::max(box.y1, other.y1)};
}

struct ZRCALLOUTS_API ScreenSegment {
    ScreenPoint from;
    ScreenPoint to;

    [[nodiscard]] ScreenBox Box() const;
};

[[nodiscard]] inline double Distance(const ScreenPoint& a, const ScreenPoint& b) {
    const double x = b.x - a.x;
    const double y = b.y - a.y;
    return std::sqrt(x * x + y * y);
}
/// Twice the area of the triangle, with the sign of its turn.
[[nodiscard]] inline double Turn(const ScreenPoint& a, const ScreenPoint& b, const ScreenPoint& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}
/// Of any point of one to any of the other; 0 if they cross.
[[nodiscard]] ZRCALLOUTS_API double Distance(const ScreenSegment& a, const ScreenSegment& b);
/// Whether they have a point in common that is an end of neither.
[[nodiscard]] inline bool DoCross(const ScreenSegment& a, const ScreenSegment& b) {
    return Turn(a.from, a.to, b.from) * Turn(a.from, a.to, b.to) < 0.0 &&
           Turn(b.from, b.to, a.from) * Turn(b.from, b.to, a.to) < 0.0;
}
/// Whether any of the segment lies inside the box.
[[nodiscard]] ZRCALLOUTS_API bool IsInside(const ScreenSegment& segment, const ScreenBox& box);

}  // namespace zrcallouts
