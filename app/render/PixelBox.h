// Where in the picture something may be: a rectangle, and how near to the eye it comes.

#pragma once

#include <algorithm>
#include <limits>

#include "dg/DPoint3D.h"

namespace zrsheet {

/// Pixels, and depth as the camera measures it.
struct PixelBox {
    double left = std::numeric_limits<double>::max();
    double top = std::numeric_limits<double>::max();
    double right = std::numeric_limits<double>::lowest();
    double bottom = std::numeric_limits<double>::lowest();
    double nearest = std::numeric_limits<double>::max();

    void Add(const dg::DPoint3D& pixel) {
        left = std::min(left, pixel.x);
        right = std::max(right, pixel.x);
        top = std::min(top, pixel.y);
        bottom = std::max(bottom, pixel.y);
        nearest = std::min(nearest, pixel.z);
    }
    bool Touches(const PixelBox& o) const {
        return left <= o.right && right >= o.left && top <= o.bottom && bottom >= o.top;
    }
    bool Holds(const PixelBox& o) const {
        return left <= o.left && right >= o.right && top <= o.top && bottom >= o.bottom;
    }
    PixelBox Moved(const dg::DVec3& by) const {
        return {left + by.x, top + by.y, right + by.x, bottom + by.y, nearest + by.z};
    }
};

}  // namespace zrsheet
