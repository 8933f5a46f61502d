#include "app/document/ListColumn.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "app/document/UserError.h"

namespace zrsheet {
namespace {

/// In the order of the enumeration.
constexpr std::array<std::string_view, 5> kWords{"item", "quantity", "name", "tag", "level"};
constexpr std::string_view kProperty = "property:";

}  // namespace

bool IsListColumn(std::string_view word) {
    if (word.starts_with(kProperty)) return word.size() > kProperty.size();
    return std::find(kWords.begin(), kWords.end(), word) != kWords.end();
}

ListColumn ListColumnOf(std::string_view word) {
    if (word.starts_with(kProperty)) return {ListField::Property, std::string(word.substr(kProperty.size()))};
    const auto found = std::find(kWords.begin(), kWords.end(), word);
    return {static_cast<ListField>(found - kWords.begin()), {}};
}

std::vector<std::string> ParseListColumns(std::string_view words) {
    std::vector<std::string> columns;
    while (true) {
        const std::size_t comma = words.find(',');
        const std::string word(words.substr(0, comma));
        if (!IsListColumn(word)) {
            throw UserError("'" + word +
                            "' is no column of the parts list; use item, quantity, name, tag, level or "
                            "property:NAME, with commas between");
        }
        columns.push_back(word);
        if (comma == std::string_view::npos) return columns;
        words.remove_prefix(comma + 1);
    }
}

}  // namespace zrsheet
