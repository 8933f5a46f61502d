// The printed parts list: how wide its columns are and how it is broken into tables beside each other.

#pragma once

#include <vector>

#include "app/sheet/Sheet.h"

namespace zrsheet {

/// Measures the items once; then tables of any height can be made. Titles are in the language of the host.
class PartsTable {
public:
    /// No columns: item, quantity, name and, where an item has one, the tag.
    PartsTable(const std::vector<SheetItem>& items, const SheetStyle& style,
               const std::vector<std::string>& columns = {});

    /// The same with rows as close as they can be read.
    [[nodiscard]] PartsTable Dense() const;

    /// Of one table.
    [[nodiscard]] double Width() const { return m_width; }
    [[nodiscard]] double Height(std::size_t rows) const;
    [[nodiscard]] std::size_t RowCount() const { return m_rows.size(); }
    /// How many rows fit into a table of the height; at least one.
    [[nodiscard]] std::size_t RowsWithin(double height) const;
    /// Tables of `rowsEach` rows, the first with its top left corner at `corner`, the next to its right.
    [[nodiscard]] std::vector<SheetTable> Tables(PagePoint corner, std::size_t rowsEach) const;
    /// The same as one table of `count` rows at most, from row `first` on, its top left corner at the page's;
    /// what `width` is more than Width() goes to the widest column.
    [[nodiscard]] SheetTable Table(std::size_t first, std::size_t count, double width) const;

    static constexpr double kTableGap = 18.0;

private:
    double m_rowHeight;
    double m_width = 0.0;
    std::vector<TableColumn> m_columns;
    std::vector<std::vector<TableCell>> m_rows;
};

}  // namespace zrsheet
