#include "app/sheet/PaperLayout.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>

#include "app/render/TextMetrics.h"
#include "app/sheet/PartsTable.h"
#include "du/Localizer.h"

namespace zrsheet {
namespace {

// Millimetres. The margin at the left is for binding.
constexpr double kBinding = 20.0;
constexpr double kMargin = 10.0;
constexpr double kGap = 4.0;  // around the picture
constexpr double kNarrowBlock = 84.0;
constexpr double kWideBlock = 120.0;  // from here on two fields beside each other
constexpr double kWidestBlock = 180.0;
constexpr double kNarrowFrame = 200.0;
constexpr double kFieldHeight = 9.0;
constexpr double kFieldPadding = 1.5;
constexpr double kSideField = 32.0;  // width of the shorter field of a row

/// The list may take so much from the picture that this share of its size remains.
constexpr double kLeastFigureShare = 0.4;
constexpr std::size_t kMostTables = 4;  // beside each other

double WidthOf(const PageBox& box) { return box.x1 - box.x0; }
double HeightOf(const PageBox& box) { return box.y1 - box.y0; }

/// How large a model can be that is as wide as high, which turned models with their balloons nearly are.
double SizeOf(const PageBox& figure) { return std::max(std::min(WidthOf(figure), HeightOf(figure)), 0.0); }

/// How the parts list and the title block below it stand on the first page.
struct Arrangement {
    std::size_t tables = 0;  // beside each other
    std::size_t rowsEach = 0;
    double width = 0.0;  // of the title block and of all tables together
    PageBox figure;
};

class PaperMaker {
public:
    PaperMaker(const PaperChoice& choice, const Document& document, const std::vector<SheetItem>& items,
               const SheetStyle& style)
        : m_choice(choice),
          m_document(document),
          m_style(style),
          m_mm(style.millimetre),
          m_table(items, style, choice.listColumns) {
        const PaperExtent extent = ExtentOf(choice.size, choice.turn);
        m_layout.width = extent.width * m_mm;
        m_layout.height = extent.height * m_mm;
        m_frame = {kBinding * m_mm, kMargin * m_mm, m_layout.width - kMargin * m_mm,
                   m_layout.height - kMargin * m_mm};
    }

    PaperLayout Make() {
        const Arrangement plain = Plain();
        std::optional<Arrangement> withList;
        const bool hasRows = m_table.RowCount() > 0 && m_choice.list != ListPlace::None;
        if (hasRows && m_choice.list == ListPlace::Sheet) withList = WithList();
        const bool isOnSheet =
            withList && SizeOf(withList->figure) >= kLeastFigureShare * SizeOf(plain.figure);
        const bool hasPages = hasRows && !isOnSheet;
        const std::size_t pages = hasPages ? MakeListPages(plain.width) : 0;
        const Arrangement& chosen = isOnSheet ? *withList : plain;
        if (isOnSheet) StackTables(chosen);
        m_layout.figure = {std::ceil(chosen.figure.x0), std::ceil(chosen.figure.y0),
                           std::floor(chosen.figure.x1), std::floor(chosen.figure.y1)};
        m_layout.frame = MakeFrame(chosen.width, 1, pages + 1);
        for (std::size_t i = 0; i < pages; ++i)
            m_layout.listPages[i].frame = MakeFrame(plain.width, i + 2, pages + 1);
        return std::move(m_layout);
    }

private:
    /// Of title blocks and lists; frames that are little wider leave no gap beside them.
    double MostWidth() const {
        const double frame = WidthOf(m_frame);
        return frame < kNarrowFrame * m_mm ? frame : kWidestBlock * m_mm;
    }
    double BlockHeight(double width) const { return m_mm * kFieldHeight * (IsWide(width) ? 2.0 : 3.0); }
    bool IsWide(double width) const { return width >= kWideBlock * m_mm; }

    /// The picture above all of the title block's height.
    PageBox FigureAbove(double below) const {
        const double gap = kGap * m_mm;
        return {m_frame.x0 + gap, m_frame.y0 + gap, m_frame.x1 - gap, m_frame.y1 - below - gap};
    }

    PageBox FigureBeside(double width) const {
        const double gap = kGap * m_mm;
        return {m_frame.x0 + gap, m_frame.y0 + gap, m_frame.x1 - width - gap, m_frame.y1 - gap};
    }

    /// No list on the first page.
    Arrangement Plain() const {
        const double width = MostWidth();
        return {0, 0, width, FigureAbove(BlockHeight(width))};
    }

    std::optional<Arrangement> WithList() const {
        std::optional<Arrangement> best;
        const auto consider = [&best](const Arrangement& each) {
            if (!best || SizeOf(each.figure) > SizeOf(best->figure)) best = each;
        };
        for (std::size_t tables = 1; tables <= kMostTables; ++tables) {
            const double least = static_cast<double>(tables) * m_table.Width();
            if (least > WidthOf(m_frame)) break;
            const std::size_t rows = (m_table.RowCount() + tables - 1) / tables;
            const double narrow = std::max(least, kNarrowBlock * m_mm);
            if (BlockHeight(narrow) + m_table.Height(rows) <= HeightOf(m_frame))
                consider({tables, rows, narrow, FigureBeside(narrow)});
            const double wide = std::max(least, MostWidth());
            const double below = BlockHeight(wide) + m_table.Height(rows);
            if (below < HeightOf(m_frame)) consider({tables, rows, wide, FigureAbove(below)});
        }
        return best;
    }

    /// The first table stands at the right, the next ones to its left.
    void StackTables(const Arrangement& arrangement) {
        const double width = arrangement.width / static_cast<double>(arrangement.tables);
        const double bottom = m_frame.y1 - BlockHeight(arrangement.width);
        double right = m_frame.x1;
        for (std::size_t first = 0; first < m_table.RowCount(); first += arrangement.rowsEach) {
            SheetTable table = m_table.Table(first, arrangement.rowsEach, width);
            table.box = {right - width, bottom - table.box.y1, right, bottom};
            table.growsUp = true;
            table.isBoxed = true;
            m_layout.tables.push_back(std::move(table));
            right -= width;
        }
    }

    std::size_t MakeListPages(double blockWidth) {
        const double room = HeightOf(m_frame) - BlockHeight(blockWidth) - kGap * m_mm;
        const std::size_t rows = m_table.RowsWithin(room);
        const std::size_t wanted = (m_table.RowCount() + rows - 1) / rows;
        const auto fitting = static_cast<std::size_t>(std::max(WidthOf(m_frame) / m_table.Width(), 1.0));
        const std::size_t tables = std::min(wanted, fitting);
        const double width =
            std::max(std::min(WidthOf(m_frame) / static_cast<double>(tables), MostWidth()), m_table.Width());
        for (std::size_t first = 0; first < m_table.RowCount();) {
            SheetListPage& page = m_layout.listPages.emplace_back();
            for (std::size_t i = 0; i < tables && first < m_table.RowCount(); ++i, first += rows) {
                SheetTable table = m_table.Table(first, rows, width);
                const double left = m_frame.x0 + static_cast<double>(i) * width;
                table.box = {left, m_frame.y0, left + width, m_frame.y0 + table.box.y1};
                table.isBoxed = true;
                page.tables.push_back(std::move(table));
            }
        }
        return m_layout.listPages.size();
    }

    SheetFrame MakeFrame(double width, std::size_t page, std::size_t pages) const {
        const auto field = [](const char* message, const std::string& text) {
            const std::string caption = du::Localizer("zrsheet:sheet").LocalizeMessage(message);
            return SheetField{{}, caption, text, false};
        };
        SheetField title = field("title", TitleOf(m_document));
        title.isStrong = true;
        const SheetField model = field("model", m_document.Model().Name());
        const SheetField number = field("page", std::to_string(page) + " / " + std::to_string(pages));
        std::vector<std::vector<SheetField>> rows;
        if (IsWide(width)) {
            rows = {{title, number}, {model}};
            if (!m_choice.date.empty()) rows[1].push_back(field("date", m_choice.date));
        } else if (m_choice.date.empty()) {
            rows = {{title}, {model}, {number}};
        } else {
            rows = {{title}, {model}, {field("date", m_choice.date), number}};
        }
        return {m_frame, Stacked(rows, width)};
    }

    /// The rows from the frame's lower right corner upwards, the last field of a row at its right.
    std::vector<SheetField> Stacked(const std::vector<std::vector<SheetField>>& rows, double width) const {
        std::vector<SheetField> fields;
        double top = m_frame.y1 - BlockHeight(width);
        for (const std::vector<SheetField>& row : rows) {
            double left = m_frame.x1 - width;
            for (std::size_t i = 0; i < row.size(); ++i) {
                SheetField field = row[i];
                const bool isLast = i + 1 == row.size();
                const double right = isLast ? m_frame.x1 : m_frame.x1 - kSideField * m_mm;
                field.box = {left, top, right, top + kFieldHeight * m_mm};
                const double room = right - left - 2.0 * kFieldPadding * m_mm;
                const double size = field.isStrong ? m_style.strongFieldSize : m_style.fieldSize;
                field.text = Ellipsize(field.text, size * m_mm, room, field.isStrong);
                fields.push_back(std::move(field));
                left = right;
            }
            top += kFieldHeight * m_mm;
        }
        return fields;
    }

    const PaperChoice& m_choice;
    const Document& m_document;
    const SheetStyle& m_style;
    double m_mm;  // in page pixels
    PartsTable m_table;
    PageBox m_frame;
    PaperLayout m_layout;
};

}  // namespace

std::string TitleOf(const Document& document) {
    return document.Paper().title.empty() ? document.Model().Name() : document.Paper().title;
}

PaperLayout LayOutPaper(const Document& document, const std::vector<SheetItem>& items,
                        const SheetStyle& style) {
    return PaperMaker(document.Paper(), document, items, style).Make();
}

SheetStyle Refined(SheetStyle style, double factor) {
    style.tableFontSize *= factor;
    style.cellPadding *= factor;
    style.millimetre *= factor;
    return style;
}

}  // namespace zrsheet
