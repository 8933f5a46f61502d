#include "app/sheet/PageLayout.h"

#include <gtest/gtest.h>

#include "app/render/TextMetrics.h"

namespace zrsheet {
namespace {

std::vector<SheetItem> Items(std::size_t count, const std::string& name = "Bearing cover",
                             bool withTag = false) {
    std::vector<SheetItem> items;
    for (std::size_t i = 0; i < count; ++i) {
        SheetItem item;
        item.itemId = static_cast<unsigned>(i + 1);
        item.label = std::to_string(i + 1);
        item.quantity = 4;
        item.name = name;
        item.level = static_cast<unsigned>(i % 3);
        if (withTag && i == 1) item.tag = "T-17";
        items.push_back(item);
    }
    return items;
}

const SheetStyle kStyle;

void ExpectInside(const PageBox& box, const PageLayout& layout, const std::string& what) {
    EXPECT_GE(box.x0, 0.0) << what;
    EXPECT_GE(box.y0, 0.0) << what;
    EXPECT_LE(box.x1, layout.width) << what;
    EXPECT_LE(box.y1, layout.height) << what;
}

/// Title above, figure left, tables right of it and beside each other, all on the page and no row lost.
void ExpectSound(const PageLayout& layout, std::size_t rows) {
    ExpectInside(layout.figure, layout, "figure");
    EXPECT_LT(layout.figure.x0, layout.figure.x1);
    EXPECT_LT(layout.figure.y0, layout.figure.y1);
    EXPECT_LE(layout.title.y, layout.figure.y0);
    double right = layout.figure.x1;
    std::size_t found = 0;
    for (const SheetTable& table : layout.tables) {
        ExpectInside(table.box, layout, "table");
        EXPECT_GE(table.box.x0, right);
        EXPECT_NEAR(table.box.y1 - table.box.y0, static_cast<double>(table.rows.size() + 1) * table.rowHeight,
                    1e-6);
        right = table.box.x1;
        for (const auto& row : table.rows) EXPECT_EQ(row.front().text, std::to_string(++found));
    }
    EXPECT_EQ(found, rows);
}

TEST(PageLayout, HoldsEverythingWhateverTheSizeAndTheList) {
    for (const auto& [width, height] : {std::pair{kLeastWidth, kLeastHeight}, std::pair{800, 600},
                                        std::pair{3000, 400}, std::pair{400, 2000}}) {
        for (const std::size_t count : {std::size_t{0}, std::size_t{1}, std::size_t{25}, std::size_t{600}}) {
            SCOPED_TRACE(std::to_string(width) + "x" + std::to_string(height) + ", " + std::to_string(count) +
                         " items");
            const PageLayout layout = LayOutPage(width, height, PartsTable(Items(count), kStyle), kStyle);
            EXPECT_GE(layout.width, width);
            EXPECT_GE(layout.height, height);
            ExpectSound(layout, count);
        }
    }
}

// Balloons beyond the figure push the page outwards on each side by what they lack, and the tables with it.
TEST(PageLayout, MakesRoomForBalloonsOnEverySide) {
    const PartsTable table(Items(5), kStyle);
    const PageLayout plain = LayOutPage(800, 600, table, kStyle);
    const PageBox& figure = plain.figure;
    const PageBox inside{figure.x0 + 10, figure.y0 + 10, figure.x0 + 36, figure.y0 + 36};
    PageLayout same = plain;
    const PagePoint none = MakeRoom(same, {inside});
    EXPECT_EQ(none.x, 0.0);
    EXPECT_EQ(none.y, 0.0);
    EXPECT_EQ(same.width, plain.width);
    EXPECT_EQ(same.height, plain.height);

    const std::vector<PageBox> balloons{{figure.x0 - 40, 300, figure.x0 - 14, 326},
                                        {figure.x1 + 5, 300, figure.x1 + 31, 326},
                                        {300, figure.y0 - 50, 326, figure.y0 - 24},
                                        {300, figure.y1 + 70, 326, figure.y1 + 96}};
    PageLayout layout = plain;
    const PagePoint move = MakeRoom(layout, balloons);
    EXPECT_EQ(move.x, 40.0);
    EXPECT_EQ(move.y, 50.0);
    EXPECT_EQ(layout.figure.x0, figure.x0 + 40.0);
    EXPECT_EQ(layout.figure.x1 - layout.figure.x0, figure.x1 - figure.x0) << "the picture keeps its size";
    EXPECT_EQ(layout.width, plain.width + 40 + 31);
    for (const PageBox& balloon : balloons) {
        const PageBox moved{balloon.x0 + move.x, balloon.y0 + move.y, balloon.x1 + move.x,
                            balloon.y1 + move.y};
        ExpectInside(moved, layout, "balloon");
        EXPECT_LE(moved.x1, layout.tables.front().box.x0);
        EXPECT_GT(moved.y0, layout.title.y);
    }
    ExpectSound(layout, 5);
}

}  // namespace
}  // namespace zrsheet
