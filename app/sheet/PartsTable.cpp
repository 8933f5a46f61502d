#include "app/sheet/PartsTable.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

#include "app/render/TextMetrics.h"
#include "app/sheet/ListTable.h"
#include "du/Localizer.h"

namespace zrsheet {
namespace {

// In sizes of the text.
constexpr double kMostNameWidth = 22.5;
constexpr double kMostOtherWidth = 110.0 / 12.0;
constexpr double kIndent = 1.0;  // of a row, for each level
constexpr double kRowHeight = 1.75;
constexpr double kDenseRowHeight = 1.45;

std::string TitleOf(const ListColumn& column) {
    constexpr std::array<const char*, 5> kMessages{"item", "quantity", "name", "tag", "level"};
    if (column.field == ListField::Property) return column.property;
    return du::Localizer("zrsheet:sheet")
        .LocalizeMessage(kMessages.at(static_cast<std::size_t>(column.field)));
}

std::vector<ListColumn> UsualColumns(const std::vector<SheetItem>& items) {
    std::vector<ListColumn> columns{{ListField::Item, {}}, {ListField::Quantity, {}}, {ListField::Name, {}}};
    const bool hasTags =
        std::any_of(items.begin(), items.end(), [](const auto& item) { return !item.tag.empty(); });
    if (hasTags) columns.push_back({ListField::Tag, {}});
    return columns;
}

/// A column with its cells, as wide as the widest text takes; texts that would take more than is granted are
/// cut.
struct Draft {
    TableColumn column;
    std::vector<TableCell> cells;
};

Draft Fit(const std::vector<SheetItem>& items, const ListColumn& what, const SheetStyle& style) {
    const double size = style.tableFontSize;
    const double most = size * (what.field == ListField::Name ? kMostNameWidth : kMostOtherWidth);
    const bool isNumber = what.field == ListField::Quantity || what.field == ListField::Level;
    Draft draft{{Ellipsize(TitleOf(what), size, most, true), 0.0, isNumber}, {}};
    double width = TextWidth(draft.column.title, size, true);
    draft.cells.reserve(items.size());
    for (const SheetItem& item : items) {
        const double indent = what.field == ListField::Name ? size * kIndent * item.level : 0.0;
        const std::string text =
            Ellipsize(CellText(item, what), size, std::max(most - indent, size * kIndent));
        width = std::max(width, indent + TextWidth(text, size));
        draft.cells.push_back({text, indent});
    }
    draft.column.width = width + 2.0 * style.cellPadding;
    return draft;
}

}  // namespace

PartsTable::PartsTable(const std::vector<SheetItem>& items, const SheetStyle& style,
                       const std::vector<std::string>& columns)
    : m_rowHeight(style.tableFontSize * kRowHeight), m_rows(items.size()) {
    std::vector<ListColumn> wanted;
    wanted.reserve(columns.size());
    for (const std::string& word : columns) wanted.push_back(ListColumnOf(word));
    if (wanted.empty()) wanted = UsualColumns(items);
    for (const ListColumn& column : wanted) {
        const Draft draft = Fit(items, column, style);
        m_width += draft.column.width;
        for (std::size_t i = 0; i < m_rows.size(); ++i) m_rows[i].push_back(draft.cells[i]);
        m_columns.push_back(draft.column);
    }
}

PartsTable PartsTable::Dense() const {
    PartsTable dense = *this;
    dense.m_rowHeight *= kDenseRowHeight / kRowHeight;
    return dense;
}

double PartsTable::Height(std::size_t rows) const { return static_cast<double>(rows + 1) * m_rowHeight; }

std::size_t PartsTable::RowsWithin(double height) const {
    return static_cast<std::size_t>(std::max(height / m_rowHeight - 1.0, 1.0));
}

SheetTable PartsTable::Table(std::size_t first, std::size_t count, double width) const {
    const std::size_t last = std::min(first + count, m_rows.size());
    SheetTable table;
    table.box = {0.0, 0.0, m_width, Height(last - first)};
    table.rowHeight = m_rowHeight;
    table.columns = m_columns;
    table.rows.assign(m_rows.begin() + static_cast<std::ptrdiff_t>(first),
                      m_rows.begin() + static_cast<std::ptrdiff_t>(last));
    if (width > m_width) {
        const auto widest = std::max_element(table.columns.begin(), table.columns.end(),
                                             [](const auto& a, const auto& b) { return a.width < b.width; });
        widest->width += width - m_width;
        table.box.x1 = width;
    }
    return table;
}

std::vector<SheetTable> PartsTable::Tables(PagePoint corner, std::size_t rowsEach) const {
    std::vector<SheetTable> tables;
    for (std::size_t first = 0; first < m_rows.size(); first += rowsEach) {
        SheetTable& table = tables.emplace_back(Table(first, rowsEach, m_width));
        table.box = {corner.x, corner.y, corner.x + m_width, corner.y + table.box.y1};
        corner.x += m_width + kTableGap;
    }
    return tables;
}

}  // namespace zrsheet
