// Where title, picture and parts list lie on the page.

#pragma once

#include <vector>

#include "app/sheet/PartsTable.h"
#include "app/sheet/Sheet.h"

namespace zrsheet {

/// The parts list stands to the right of the picture, in as many tables as fit without taking more than half
/// of the page. What does not fit makes the page higher, and small pages grow until the picture shows
/// something.
struct PageLayout {
    double width = 0.0;
    double height = 0.0;
    PagePoint title;  // baseline
    PageBox figure;   // whole pixels
    std::vector<SheetTable> tables;
};

/// Requires: the page is at least kLeastWidth x kLeastHeight.
[[nodiscard]] PageLayout LayOutPage(int width, int height, const PartsTable& table, const SheetStyle& style);

/// Gives the figure another size; the tables move, and the page grows, where they are in its way.
void SetFigureSize(PageLayout& layout, int width, int height);

/// Makes the page larger and moves the tables until balloons that stand out of the figure have room, and
/// moves the figure. Returns by how much everything in the figure moved right and down; `balloons` are page
/// pixels.
[[nodiscard]] PagePoint MakeRoom(PageLayout& layout, const std::vector<PageBox>& balloons);

inline constexpr int kLeastWidth = 400;
inline constexpr int kLeastHeight = 300;

}  // namespace zrsheet
