// Choices that authors name by one of a few words.

#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace zrsheet {

/// The word's place among `words`. Throws UserError when it is none of them: "'x' is no `what`; use ...".
[[nodiscard]] std::size_t ParseChoice(std::string_view word, std::span<const std::string_view> words,
                                      std::string_view what);

}  // namespace zrsheet
