#include "app/sheet/PartsTable.h"

#include <algorithm>
#include <string>

#include "app/render/TextMetrics.h"
#include "du/Localizer.h"

namespace zrsheet {
namespace {

constexpr double kMostNameWidth = 270.0;
constexpr double kMostOtherWidth = 110.0;
constexpr double kIndent = 12.0;  // of a row, for each level

/// A column before it is known how wide it is.
struct Draft {
    TableColumn column;
    double mostWidth;
    std::vector<TableCell> cells;
};

Draft MakeDraft(const std::string& message, bool alignRight, double mostWidth) {
    return {{du::Localizer("zrsheet:sheet").LocalizeMessage(message), 0.0, alignRight}, mostWidth, {}};
}

/// Sets the width to what the widest text takes, and cuts the texts that would take more than is granted.
void Fit(Draft& draft, const SheetStyle& style) {
    double width = TextWidth(draft.column.title, style.tableFontSize, true);
    for (TableCell& cell : draft.cells) {
        cell.text =
            Ellipsize(cell.text, style.tableFontSize, std::max(draft.mostWidth - cell.indent, kIndent));
        width = std::max(width, cell.indent + TextWidth(cell.text, style.tableFontSize));
    }
    draft.column.width = width + 2.0 * style.cellPadding;
}

std::vector<Draft> DraftColumns(const std::vector<SheetItem>& items) {
    std::vector<Draft> drafts{MakeDraft("item", false, kMostOtherWidth),
                              MakeDraft("quantity", true, kMostOtherWidth),
                              MakeDraft("name", false, kMostNameWidth)};
    const bool hasTags =
        std::any_of(items.begin(), items.end(), [](const auto& item) { return !item.tag.empty(); });
    if (hasTags) drafts.push_back(MakeDraft("tag", false, kMostOtherWidth));
    for (const SheetItem& item : items) {
        drafts[0].cells.push_back({item.label, 0.0});
        drafts[1].cells.push_back({std::to_string(item.quantity), 0.0});
        drafts[2].cells.push_back({item.name, kIndent * item.level});
        if (hasTags) drafts[3].cells.push_back({item.tag, 0.0});
    }
    return drafts;
}

}  // namespace

PartsTable::PartsTable(const std::vector<SheetItem>& items, const SheetStyle& style)
    : m_rowHeight(style.tableFontSize * 1.75), m_rows(items.size()) {
    for (Draft& draft : DraftColumns(items)) {
        Fit(draft, style);
        m_width += draft.column.width;
        for (std::size_t i = 0; i < m_rows.size(); ++i) m_rows[i].push_back(draft.cells[i]);
        m_columns.push_back(draft.column);
    }
}

double PartsTable::Height(std::size_t rows) const { return static_cast<double>(rows + 1) * m_rowHeight; }

std::size_t PartsTable::RowsWithin(double height) const {
    return static_cast<std::size_t>(std::max(height / m_rowHeight - 1.0, 1.0));
}

std::vector<SheetTable> PartsTable::Tables(PagePoint corner, std::size_t rowsEach) const {
    std::vector<SheetTable> tables;
    for (std::size_t first = 0; first < m_rows.size(); first += rowsEach) {
        const std::size_t last = std::min(first + rowsEach, m_rows.size());
        SheetTable table;
        table.box = {corner.x, corner.y, corner.x + m_width, corner.y + Height(last - first)};
        table.rowHeight = m_rowHeight;
        table.columns = m_columns;
        table.rows.assign(m_rows.begin() + static_cast<std::ptrdiff_t>(first),
                          m_rows.begin() + static_cast<std::ptrdiff_t>(last));
        tables.push_back(std::move(table));
        corner.x += m_width + kTableGap;
    }
    return tables;
}

}  // namespace zrsheet
