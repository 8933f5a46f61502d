// Places in pixels of a page or of a view: origin top left, y downwards.

#pragma once

namespace zrsheet {

struct PagePoint {
    double x = 0.0;
    double y = 0.0;
};

/// x0 <= x1 and y0 <= y1.
struct PageBox {
    double x0 = 0.0;
    double y0 = 0.0;
    double x1 = 0.0;
    double y1 = 0.0;
};

}  // namespace zrsheet
