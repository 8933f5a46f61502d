#include "app/sheet/PageLayout.h"

#include <algorithm>
#include <cmath>

namespace zrsheet {
namespace {

constexpr double kMargin = 24.0;
constexpr double kMostTableShare = 0.5;  // of the page's width
// What balloons leave of less shows nothing.
constexpr double kLeastFigureWidth = 400.0;
constexpr double kLeastFigureHeight = 320.0;
constexpr double kTallest = 1.2;  // of figures that are as high as a long list, in widths

/// How many rows each table gets so that they stand beside each other in the room there is.
std::size_t RowsEach(const PartsTable& table, double width, double height) {
    const std::size_t fitting = table.RowsWithin(height);
    const double room = kMostTableShare * width - kMargin;
    const auto most = static_cast<std::size_t>(
        std::max((room + PartsTable::kTableGap) / (table.Width() + PartsTable::kTableGap), 1.0));
    const std::size_t wanted = (table.RowCount() + fitting - 1) / fitting;
    const std::size_t columns = std::clamp<std::size_t>(wanted, 1, most);
    return std::max<std::size_t>((table.RowCount() + columns - 1) / columns, 1);
}

void Shift(PageBox& box, double x, double y) {
    box.x0 += x;
    box.x1 += x;
    box.y0 += y;
    box.y1 += y;
}

}  // namespace

PageLayout LayOutPage(int width, int height, const PartsTable& table, const SheetStyle& style) {
    PageLayout layout;
    layout.title = {kMargin, std::round(kMargin + style.titleFontSize)};
    const double top = std::round(layout.title.y + style.titleFontSize * 0.8);
    const double bodyHeight = height - top - kMargin;
    const std::size_t rows = RowsEach(table, width, bodyHeight);
    layout.tables = table.Tables({0.0, top}, rows);
    const double tablesWidth = layout.tables.empty() ? 0.0 : layout.tables.back().box.x1;
    const double left = std::round(std::max(
        {width - kMargin - tablesWidth, kMostTableShare * width, kLeastFigureWidth + 2.0 * kMargin}));
    for (SheetTable& part : layout.tables) Shift(part.box, left, 0.0);
    const double tablesHeight = table.Height(std::min(rows, table.RowCount()));
    const double figureWidth = left - 2.0 * kMargin;
    const double beside = std::min(std::ceil(tablesHeight), kTallest * figureWidth);
    layout.figure = {kMargin, top, left - kMargin,
                     std::max({height - kMargin, top + kLeastFigureHeight, std::floor(top + beside)})};
    layout.width = std::max<double>(width, std::floor(left + tablesWidth + kMargin));
    layout.height = std::max(layout.figure.y1, std::ceil(top + tablesHeight)) + kMargin;
    return layout;
}

void SetFigureSize(PageLayout& layout, int width, int height) {
    PageBox& figure = layout.figure;
    const double wider = std::max(figure.x0 + width - figure.x1, 0.0);
    figure.x1 = figure.x0 + width;
    figure.y1 = figure.y0 + height;
    for (SheetTable& table : layout.tables) Shift(table.box, wider, 0.0);
    layout.width += wider;
    layout.height = std::max(layout.height, figure.y1 + kMargin);
}

PagePoint MakeRoom(PageLayout& layout, const std::vector<PageBox>& balloons) {
    PageBox needed = layout.figure;
    for (const PageBox& balloon : balloons) {
        needed.x0 = std::min(needed.x0, std::floor(balloon.x0));
        needed.y0 = std::min(needed.y0, std::floor(balloon.y0));
        needed.x1 = std::max(needed.x1, std::ceil(balloon.x1));
        needed.y1 = std::max(needed.y1, std::ceil(balloon.y1));
    }
    const PagePoint move{layout.figure.x0 - needed.x0, layout.figure.y0 - needed.y0};
    const double wider = move.x + needed.x1 - layout.figure.x1;
    const double higher = std::max(0.0, needed.y1 + move.y + kMargin - layout.height);
    for (SheetTable& table : layout.tables) Shift(table.box, wider, 0.0);
    layout.width += wider;
    layout.height += higher;
    Shift(layout.figure, move.x, move.y);
    return move;
}

}  // namespace zrsheet
