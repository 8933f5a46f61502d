// Writes texts as words of a command line.

#pragma once

#include <string>
#include <string_view>

namespace zrsheet {

/// Reads back as this one text. `quote` is used if the author has begun with it; '\0': only where needed. The
/// closing quote is left out if `isOpen`.
[[nodiscard]] std::string Quoted(std::string_view text, char quote = '\0', bool isOpen = false);

}  // namespace zrsheet
