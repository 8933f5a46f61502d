#include "app/command/TextTable.h"

#include <algorithm>

namespace zrsheet {
namespace {

std::size_t WidthOf(const std::string& text) {
    return static_cast<std::size_t>(std::count_if(
        text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

}  // namespace

TextTable::TextTable(Row titles) : m_rows{std::move(titles)} {}

std::string TextTable::Text() const {
    std::vector<std::size_t> widths(m_rows.front().size());
    for (const Row& row : m_rows) {
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], WidthOf(row[i]));
    }
    std::string text;
    for (const Row& row : m_rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            line += row[i] + std::string(widths[i] - WidthOf(row[i]) + 2, ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + "\n";
    }
    return text;
}

}  // namespace zrsheet
