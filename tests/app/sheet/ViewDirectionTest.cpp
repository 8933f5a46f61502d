#include "app/sheet/ViewDirection.h"

#include <gtest/gtest.h>

#include <cmath>

#include "app/sheet/SheetError.h"

namespace zrsheet {
namespace {

// What each name promises: which axis of the model runs to the right on the page and which one upwards (Y up,
// the front looks towards Z). A view with a wrong "up" shows the model on its side, one mirrored shows left
// as right.
TEST(ViewDirection, ShowsTheSideThatItsNameSays) {
    struct Row {
        const char* name;
        dg::DVec3 right;
        dg::DVec3 up;
    };
    const std::vector<Row> rows{
        {"front", {1, 0, 0}, {0, 1, 0}},  {"back", {-1, 0, 0}, {0, 1, 0}}, {"left", {0, 0, 1}, {0, 1, 0}},
        {"right", {0, 0, -1}, {0, 1, 0}}, {"top", {1, 0, 0}, {0, 0, -1}},  {"bottom", {1, 0, 0}, {0, 0, 1}},
    };
    for (const Row& row : rows) {
        const ViewDirection view = ParseViewDirection(row.name);
        const dg::DVec3 right{view.look.y * view.up.z - view.look.z * view.up.y,
                              view.look.z * view.up.x - view.look.x * view.up.z,
                              view.look.x * view.up.y - view.look.y * view.up.x};
        EXPECT_DOUBLE_EQ(right.x * row.right.x + right.y * row.right.y + right.z * row.right.z, 1.0)
            << row.name;
        EXPECT_DOUBLE_EQ(view.up.x * row.up.x + view.up.y * row.up.y + view.up.z * row.up.z, 1.0) << row.name;
    }
    EXPECT_EQ(ViewNames().size(), rows.size() + 1);
    EXPECT_NO_THROW(static_cast<void>(ParseViewDirection("iso")));
}

TEST(ViewDirection, ReadsDirectionsStraightDownToo) {
    const ViewDirection tilted = ParseViewDirection("-1,0.5,-2e0");
    EXPECT_DOUBLE_EQ(tilted.look.x, -1.0);
    EXPECT_DOUBLE_EQ(tilted.look.y, 0.5);
    EXPECT_DOUBLE_EQ(tilted.look.z, -2.0);
    // "Up" along the look would leave the page without an upright: same picture as the named view instead.
    for (const auto& [text, name] :
         {std::pair{"0,-3,0", "top"}, std::pair{"0,3,0", "bottom"}, std::pair{"1e-9,-1,0", "top"}}) {
        const ViewDirection straight = ParseViewDirection(text);
        const ViewDirection named = ParseViewDirection(name);
        EXPECT_NEAR(straight.up.z, named.up.z, 1e-6) << text;
        EXPECT_NEAR(straight.up.y, 0.0, 1e-6) << text;
    }
}

TEST(ViewDirection, RejectsWhatGivesNoDirection) {
    for (const char* text : {"", "diagonal", "Front", "0,0,0", "1,2", "1,2,3,4", "1,2,3,", "1 ,2,3",
                             "nan,0,1", "inf,0,0", "1,,2", "1e999,0,0"}) {
        EXPECT_THROW(static_cast<void>(ParseViewDirection(text)), SheetError) << text;
    }
}

}  // namespace
}  // namespace zrsheet
