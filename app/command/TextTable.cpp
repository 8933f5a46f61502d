#include "app/command/TextTable.h"

#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>

namespace zrsheet {
namespace {

std::size_t ColumnsOf(UChar32 character) {
    if (u_charType(character) == U_NON_SPACING_MARK) return 0;
    const int width = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

std::size_t WidthOf(const std::string& text) {
    const auto characters = icu::UnicodeString::fromUTF8(text);
    std::size_t width = 0;
    for (int i = 0; i < characters.length(); i = characters.moveIndex32(i, 1))
        width += ColumnsOf(characters.char32At(i));
    return width;
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
