#include "app/sheet/PaperLayout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "app/sheet/SheetMaker.h"
#include "tests/app/document/AssemblyMaker.h"

namespace zrsheet {
namespace {

const PaperChoice kA4{PaperSize::A4, PaperTurn::Landscape, ListPlace::Sheet, "", "", {}};

/// So many different parts, the next one always that far from the last.
Assembly Boards(int parts, const std::array<double, 3>& step, const std::string& what = "Board") {
    AssemblyMaker maker("shelf");
    for (int i = 0; i < parts; ++i) {
        const std::string name = what + " " + std::to_string(i);
        maker.Node(name, -1, maker.Box(name, 1.0F + 0.001F * static_cast<float>(i), 1, 1),
                   {step[0] * i, step[1] * i, step[2] * i});
    }
    return maker.Get();
}

/// Seen from the front.
Sheet SheetOf(Assembly assembly, const PaperChoice& paper, const std::vector<std::string>& selection) {
    SheetOptions options;
    options.paper = paper;
    options.threads = 1;
    options.selection = selection;
    options.view = {{0, 0, -1}, {0, 1, 0}};
    return MakeSheet(std::move(assembly), options, [](std::string_view, int) {});
}

/// A row.
Sheet SheetOf(int parts, const PaperChoice& paper, const std::vector<std::string>& selection = {}) {
    return SheetOf(Boards(parts, {2.0, 0, 0}), paper, selection);
}

double WidthOf(const PageBox& box) { return box.x1 - box.x0; }
double HeightOf(const PageBox& box) { return box.y1 - box.y0; }

bool Holds(const PageBox& outer, const PageBox& inner) {
    constexpr double kSlack = 1e-6;
    return inner.x0 >= outer.x0 - kSlack && inner.y0 >= outer.y0 - kSlack && inner.x1 <= outer.x1 + kSlack &&
           inner.y1 <= outer.y1 + kSlack;
}

bool Overlap(const PageBox& a, const PageBox& b) {
    constexpr double kSlack = 1e-6;
    return a.x0 < b.x1 - kSlack && b.x0 < a.x1 - kSlack && a.y0 < b.y1 - kSlack && b.y0 < a.y1 - kSlack;
}

/// All boxes within the frame, none over another.
void ExpectApart(const PageBox& frame, const std::vector<PageBox>& boxes) {
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        EXPECT_TRUE(Holds(frame, boxes[i])) << i;
        for (std::size_t k = 0; k < i; ++k) EXPECT_FALSE(Overlap(boxes[i], boxes[k])) << k << " and " << i;
    }
}

std::vector<PageBox> BoxesOf(const SheetFrame& frame, const std::vector<SheetTable>& tables) {
    std::vector<PageBox> boxes;
    for (const SheetField& field : frame.fields) boxes.push_back(field.box);
    for (const SheetTable& table : tables) boxes.push_back(table.box);
    return boxes;
}

std::size_t RowsOn(const std::vector<SheetTable>& tables, bool growUp) {
    std::size_t rows = 0;
    for (const SheetTable& table : tables) {
        EXPECT_EQ(table.growsUp, growUp);
        for (const auto& row : table.rows) EXPECT_EQ(row.front().text, std::to_string(++rows));
    }
    return rows;
}

std::size_t RowsOf(const Sheet& sheet) {
    if (!sheet.tables.empty()) return RowsOn(sheet.tables, true);
    std::vector<SheetTable> all;
    for (const auto& page : sheet.listPages) all.insert(all.end(), page.tables.begin(), page.tables.end());
    return RowsOn(all, false);
}

/// The page is as large as its paper, nothing lies on anything else, and no row is lost.
void ExpectSound(const Sheet& sheet, const PaperChoice& paper, std::size_t rows) {
    const PaperExtent extent = ExtentOf(paper.size, paper.turn);
    EXPECT_NEAR(sheet.width / sheet.style.millimetre, extent.width, 1e-6);
    EXPECT_NEAR(sheet.height / sheet.style.millimetre, extent.height, 1e-6);
    ASSERT_TRUE(sheet.frame);
    std::vector<PageBox> boxes = BoxesOf(*sheet.frame, sheet.tables);
    for (const SheetCallout& callout : sheet.callouts) boxes.push_back(callout.box);
    ExpectApart(sheet.frame->box, boxes);
    for (const SheetListPage& page : sheet.listPages)
        ExpectApart(page.frame.box, BoxesOf(page.frame, page.tables));
    EXPECT_EQ(RowsOf(sheet), rows);
}

TEST(PaperLayout, HoldsEverythingOnEveryPaper) {
    for (const PaperSize size : {PaperSize::A4, PaperSize::A3, PaperSize::Letter}) {
        for (const PaperTurn turn : {PaperTurn::Landscape, PaperTurn::Portrait}) {
            for (const ListPlace list : {ListPlace::Sheet, ListPlace::Page, ListPlace::None}) {
                for (const int parts : {1, 30}) {
                    const PaperChoice paper{size, turn, list, "", "2031-02-03", {}};
                    SCOPED_TRACE(std::string(kPaperWords.at(static_cast<std::size_t>(size))) + " " +
                                 std::string(kTurnWords.at(static_cast<std::size_t>(turn))) + " " +
                                 std::string(kListWords.at(static_cast<std::size_t>(list))) + " " +
                                 std::to_string(parts));
                    const Sheet sheet = SheetOf(parts, paper, {"Board 0"});
                    const bool hasList = list != ListPlace::None;
                    ExpectSound(sheet, paper, hasList ? static_cast<std::size_t>(parts) : 0U);
                    EXPECT_EQ(sheet.listPages.empty(), list != ListPlace::Page);
                }
            }
        }
    }
}

TEST(PaperLayout, GivesALongListPagesOfItsOwn) {
    const Sheet sheet = SheetOf(300, kA4, {"Board 0"});
    ExpectSound(sheet, kA4, 300);
    EXPECT_TRUE(sheet.tables.empty());
    EXPECT_GT(sheet.listPages.size(), 1U);
}

// The longest list that stays on the sheet leaves the picture a good part of its size, and none goes early.
TEST(PaperLayout, KeepsTheListOnTheSheetAsLongAsThePictureRemainsLarge) {
    const auto pile = [](int parts, ListPlace list) {
        PaperChoice paper = kA4;
        paper.list = list;
        return SheetOf(Boards(parts, {0, 0, -2}), paper, {"Board 0"});
    };
    int fitting = 30;
    for (int tooMany = 200; tooMany - fitting > 1;) {
        const int middle = (fitting + tooMany) / 2;
        (pile(middle, ListPlace::Sheet).listPages.empty() ? fitting : tooMany) = middle;
    }
    const double share = HeightOf(pile(fitting, ListPlace::Sheet).model.box) /
                         HeightOf(pile(fitting, ListPlace::None).model.box);
    EXPECT_GE(share, 0.38) << fitting;
    EXPECT_LT(share, 0.5) << fitting;
    for (const int parts : {fitting, fitting + 1}) {
        EXPECT_EQ(pile(parts, ListPlace::Sheet).style.millimetre, SheetStyle().millimetre)
            << "framed for the place that it has";
    }
}

// A row of parts gets the paper's whole width, a tower its height.
TEST(PaperLayout, GivesThePictureTheShapeOfTheModel) {
    const Sheet wide = SheetOf(Boards(9, {2, 0, 0}), kA4, {"Board 0"});
    EXPECT_GT(WidthOf(wide.figure), 0.9 * WidthOf(wide.frame->box));
    const Sheet tall = SheetOf(Boards(9, {0, 2, 0}), kA4, {"Board 0"});
    EXPECT_GT(HeightOf(tall.figure), 0.9 * HeightOf(tall.frame->box));
    for (const Sheet* sheet : {&wide, &tall}) ExpectSound(*sheet, kA4, 9);
}

// A short list stands in one table where more of them would gain next to nothing, and only a long one has
// rows that stand close.
TEST(PaperLayout, LeavesTheListItsRoom) {
    PaperChoice portrait = kA4;
    portrait.turn = PaperTurn::Portrait;
    const auto rowHeight = [](const Sheet& sheet) {
        return sheet.tables.at(0).rowHeight / sheet.style.millimetre;
    };
    const Sheet few = SheetOf(Boards(9, {0, 0, -2}), portrait, {"Board 0"});
    EXPECT_EQ(few.tables.size(), 1U);
    EXPECT_NEAR(rowHeight(few), 5.56, 0.01);
    const Sheet many = SheetOf(Boards(30, {0, 0, -2}, "Board of the shelf, right"), kA4, {"* 0"});
    EXPECT_EQ(many.tables.size(), 1U);
    EXPECT_NEAR(rowHeight(many), 4.60, 0.01);
    ExpectSound(many, kA4, 30);
}

// From the middles outwards, so that the zones of all sheets of a size are the same ones.
TEST(PaperLayout, NamesTheZonesOfTheFrame) {
    const struct {
        PaperSize size;
        PaperTurn turn;
        const char* names;
    } rows[] = {{PaperSize::A4, PaperTurn::Landscape, "123456ABCD"},
                {PaperSize::Letter, PaperTurn::Portrait, "1234ABCDEF"},
                {PaperSize::A3, PaperTurn::Landscape, "1122334455667788AABBCCDDEEFF"}};
    for (const auto& row : rows) {
        PaperChoice paper = kA4;
        paper.size = row.size;
        paper.turn = row.turn;
        const Sheet sheet = SheetOf(1, paper);
        const PageBox& frame = sheet.frame->box;
        std::string names;
        int inner = 0;
        for (const SheetZone& zone : sheet.frame->zones) {
            names += zone.text;
            EXPECT_FALSE(Overlap(zone.box, frame)) << zone.text;
            EXPECT_TRUE(Holds(sheet.frame->border, zone.box)) << zone.text;
            EXPECT_TRUE(Holds({0, 0, sheet.width, sheet.height}, zone.box)) << zone.text;
            const double length = std::max(WidthOf(zone.box), HeightOf(zone.box)) / sheet.style.millimetre;
            inner += std::abs(length - 50.0) < 1e-6;
        }
        EXPECT_EQ(names, row.names);
        const auto corners = static_cast<int>(row.size == PaperSize::A3 ? 8 : 4);
        EXPECT_EQ(inner, static_cast<int>(names.size()) - corners) << row.names;
    }
}

// The paper does not grow, so that what is drawn around the model must become smaller; frame and list do not.
TEST(PaperLayout, MakesRoomForManyBalloons) {
    PaperChoice paper = kA4;
    paper.list = ListPlace::Page;
    const Sheet few = SheetOf(8, paper);
    const Sheet many = SheetOf(120, paper);
    ExpectSound(many, paper, 120);
    EXPECT_EQ(many.callouts.size(), 120U);
    EXPECT_GT(many.style.millimetre, 1.1 * few.style.millimetre);
    const auto rowHeight = [](const Sheet& sheet) {
        return sheet.listPages[0].tables[0].rowHeight / sheet.style.millimetre;
    };
    EXPECT_NEAR(rowHeight(many), rowHeight(few), 1e-9);
}

TEST(PaperLayout, FillsInTheTitleBlock) {
    const auto told = [](const PaperChoice& paper, const std::array<double, 3>& step) {
        std::string text;
        const Sheet sheet = SheetOf(Boards(3, step), paper, {"Board 0"});
        for (const SheetField& field : sheet.frame->fields)
            text.append(field.caption).append("=").append(field.text).append(" ");
        for (const SheetListPage& page : sheet.listPages) text.append(page.frame.fields[1].text);
        return text;
    };
    EXPECT_EQ(told(kA4, {0, 2, 0}), "Title=shelf Model=shelf Sheet=1 / 1 ");
    EXPECT_EQ(
        told({PaperSize::A4, PaperTurn::Portrait, ListPlace::Page, "A shelf", "2031-02-03", {}}, {2, 0, 0}),
        "Title=A shelf Sheet=1 / 2 Model=shelf Date=2031-02-03 2 / 2");
}

TEST(PaperLayout, ListsTheColumnsThatTheAuthorChose) {
    PaperChoice paper = kA4;
    paper.listColumns = {"name", "property:Name", "quantity"};
    const Sheet sheet = SheetOf(1, paper);
    std::vector<std::string> titles;
    for (const TableColumn& column : sheet.tables.at(0).columns) titles.push_back(column.title);
    EXPECT_THAT(titles, testing::ElementsAre("Name", "Name", "Qty"));
}

}  // namespace
}  // namespace zrsheet
