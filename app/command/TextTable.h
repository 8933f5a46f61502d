// Rows of texts, written with their columns aligned.

#pragma once

#include <string>
#include <vector>

namespace zrsheet {

class TextTable {
public:
    using Row = std::vector<std::string>;

    explicit TextTable(Row titles);

    /// Requires: as many cells as there are titles.
    void Add(Row row) { m_rows.push_back(std::move(row)); }
    [[nodiscard]] bool IsEmpty() const { return m_rows.size() == 1; }
    /// Two spaces between columns, none at the ends of lines. Widths are those at a terminal, where
    /// ideographs take two places.
    [[nodiscard]] std::string Text() const;

private:
    std::vector<Row> m_rows;  // the titles first
};

}  // namespace zrsheet
