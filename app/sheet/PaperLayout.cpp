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
constexpr double kGap = 4.0;        // around the picture
constexpr double kBalloons = 20.0;  // what they take on each side of the model, more or less
constexpr double kNarrowBlock = 84.0;
constexpr double kWideBlock = 120.0;  // from here on two fields beside each other
constexpr double kWidestBlock = 180.0;
constexpr double kNarrowFrame = 200.0;
constexpr double kFieldHeight = 9.0;
constexpr double kFieldPadding = 1.5;
constexpr double kSideField = 32.0;  // width of the shorter field of a row
// The frame's margin is parted from the middles of its sides on; the zones at the corners take what remains.
constexpr double kZone = 50.0;
constexpr double kZoneHeight = 5.0;
constexpr double kLargeSheet = 400.0;  // the longer side of one with zones all around

/// The list may take so much from the picture that this share of its size remains.
constexpr double kLeastFigureShare = 0.4;
/// The picture must become so much larger for one more table to be worth it, and for rows that stand close.
constexpr double kTableWorth = 1.05;
constexpr double kDenseWorth = 1.1;
constexpr std::size_t kMostTables = 4;  // beside each other

double WidthOf(const PageBox& box) { return box.x1 - box.x0; }
double HeightOf(const PageBox& box) { return box.y1 - box.y0; }

/// How the parts list and the title block below it stand on the first page.
struct Arrangement {
    const PartsTable* list = nullptr;
    std::size_t tables = 0;  // beside each other
    std::size_t rowsEach = 0;
    double width = 0.0;  // of the title block and of all tables together
    PageBox figure;
};

class PaperMaker {
public:
    PaperMaker(const PaperChoice& choice, const Document& document, const std::vector<SheetItem>& items,
               const SheetStyle& style, const PaperContent& content)
        : m_choice(choice),
          m_document(document),
          m_style(style),
          m_content(content),
          m_mm(style.millimetre),
          m_table(items, style, choice.listColumns),
          m_denseTable(m_table.Dense()) {
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
        const bool isOnSheet = withList && SizeOf(*withList) >= kLeastFigureShare * SizeOf(plain);
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
    /// How large the model can be.
    double SizeOf(const Arrangement& arrangement) const {
        const double balloons = 2.0 * kBalloons * m_mm;
        return std::max(std::min((WidthOf(arrangement.figure) - balloons) / m_content.width,
                                 (HeightOf(arrangement.figure) - balloons) / m_content.height),
                        0.0);
    }

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
        return {nullptr, 0, 0, width, FigureAbove(BlockHeight(width))};
    }

    std::optional<Arrangement> WithList() const {
        std::optional<Arrangement> best = Best(m_table);
        const std::optional<Arrangement> dense = Best(m_denseTable);
        if (dense && (!best || SizeOf(*dense) > kDenseWorth * SizeOf(*best))) best = dense;
        return best;
    }

    std::optional<Arrangement> Best(const PartsTable& list) const {
        std::optional<Arrangement> best;
        const auto consider = [&](const Arrangement& each) {
            const double worth = best && each.tables > best->tables ? kTableWorth : 1.0;
            if (!best || SizeOf(each) > worth * SizeOf(*best)) best = each;
        };
        for (std::size_t tables = 1; tables <= kMostTables; ++tables) {
            const double least = static_cast<double>(tables) * list.Width();
            if (least > WidthOf(m_frame)) break;
            const std::size_t rows = (list.RowCount() + tables - 1) / tables;
            const double narrow = std::max(least, kNarrowBlock * m_mm);
            if (BlockHeight(narrow) + list.Height(rows) <= HeightOf(m_frame))
                consider({&list, tables, rows, narrow, FigureBeside(narrow)});
            const double wide = std::max(least, MostWidth());
            const double below = BlockHeight(wide) + list.Height(rows);
            if (below < HeightOf(m_frame)) consider({&list, tables, rows, wide, FigureAbove(below)});
        }
        return best;
    }

    /// The first table stands at the right, the next ones to its left.
    void StackTables(const Arrangement& arrangement) {
        const double width = arrangement.width / static_cast<double>(arrangement.tables);
        const double bottom = m_frame.y1 - BlockHeight(arrangement.width);
        double right = m_frame.x1;
        const PartsTable& list = *arrangement.list;
        for (std::size_t first = 0; first < list.RowCount(); first += arrangement.rowsEach) {
            SheetTable table = list.Table(first, arrangement.rowsEach, width);
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
        SheetFrame frame{m_frame, Stacked(rows, width), m_frame, {}};
        AddZones(frame);
        return frame;
    }

    /// Numbers along the top, letters down the side; small sheets have them at two sides only.
    void AddZones(SheetFrame& frame) const {
        const double high = kZoneHeight * m_mm;
        const bool isLarge = std::max(m_layout.width, m_layout.height) >= kLargeSheet * m_mm;
        frame.border = {m_frame.x0 - (isLarge ? high : 0.0), m_frame.y0 - high, m_frame.x1 + high,
                        m_frame.y1 + (isLarge ? high : 0.0)};
        const auto add = [&frame](const PageBox& box, const std::string& text) {
            frame.zones.push_back({box, text});
        };
        const std::vector<double> columns = ZoneEdges(m_frame.x0, m_frame.x1, m_layout.width);
        for (std::size_t i = 1; i < columns.size(); ++i) {
            const std::string text = std::to_string(i);
            add({columns[i - 1], m_frame.y0 - high, columns[i], m_frame.y0}, text);
            if (isLarge) add({columns[i - 1], m_frame.y1, columns[i], m_frame.y1 + high}, text);
        }
        const std::vector<double> rows = ZoneEdges(m_frame.y0, m_frame.y1, m_layout.height);
        for (std::size_t i = 1; i < rows.size(); ++i) {
            const std::string text(1, static_cast<char>('A' + i - 1));
            add({m_frame.x1, rows[i - 1], m_frame.x1 + high, rows[i]}, text);
            if (isLarge) add({m_frame.x0 - high, rows[i - 1], m_frame.x0, rows[i]}, text);
        }
    }

    /// From `from` to `to`, as many zones on both sides of the middle as the paper of that length asks for.
    std::vector<double> ZoneEdges(double from, double to, double paper) const {
        const double zone = kZone * m_mm;
        const auto half = static_cast<int>(std::round(0.5 * paper / zone));
        std::vector<double> edges{from};
        for (int i = 1 - half; i < half; ++i) edges.push_back(0.5 * (from + to) + i * zone);
        edges.push_back(to);
        return edges;
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
    const PaperContent& m_content;
    double m_mm;  // in page pixels
    PartsTable m_table;
    PartsTable m_denseTable;
    PageBox m_frame;
    PaperLayout m_layout;
};

}  // namespace

std::string TitleOf(const Document& document) {
    return document.Paper().title.empty() ? document.Model().Name() : document.Paper().title;
}

PaperLayout LayOutPaper(const Document& document, const std::vector<SheetItem>& items,
                        const SheetStyle& style, const PaperContent& content) {
    return PaperMaker(document.Paper(), document, items, style, content).Make();
}

SheetStyle Refined(SheetStyle style, double factor) {
    style.tableFontSize *= factor;
    style.cellPadding *= factor;
    style.millimetre *= factor;
    return style;
}

}  // namespace zrsheet
