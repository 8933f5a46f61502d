#include "app/document/ChoiceWords.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>

#include "app/document/UserError.h"

namespace zrsheet {

std::size_t ParseChoice(std::string_view word, std::span<const std::string_view> words,
                        std::string_view what) {
    const auto found = std::find(words.begin(), words.end(), word);
    if (found != words.end()) return static_cast<std::size_t>(found - words.begin());
    std::string known;
    for (const auto each : words.first(words.size() - 1))
        known.append(known.empty() ? "" : ", ").append(each);
    throw UserError(fmt::format("'{}' is no {}; use {} or {}", word, what, known, words.back()));
}

}  // namespace zrsheet
