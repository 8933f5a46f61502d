// Puts the balloons of each side of the picture in good order: apart from each other, near what they point
// at, and with leaders that do not cross.

#pragma once

#include <cstddef>
#include <vector>

#include "app/sheet/Sheet.h"

namespace zrsheet {

/// A balloon on its way to its place. Page pixels.
struct Balloon {
    PagePoint centre;
    PagePoint anchor;  // what its first leader points at
    double width = 0.0;
    double height = 0.0;
    zrannotations::BalloonShape shape = zrannotations::BalloonShape::Round;
    std::size_t stacked = 1;  // so many balloons, one below the other

    [[nodiscard]] PageBox Box() const {
        return {centre.x - 0.5 * width, centre.y - 0.5 * height, centre.x + 0.5 * width,
                centre.y + 0.5 * height};
    }
};

/// `model` is the model's picture, around which the balloons are placed, each near its anchor. The room along
/// the sides is that of `figure` and is left only when the balloons need more. O(n log n), and O(n^2) for the
/// crossings of one side. Leaders of balloons of one height do not cross on a side; where heights differ a
/// few may.
void TidyBalloons(std::vector<Balloon>& balloons, const PageBox& model, const PageBox& figure);

}  // namespace zrsheet
