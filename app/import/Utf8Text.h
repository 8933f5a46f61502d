// Makes the texts of foreign files fit for pages, documents and lines of messages.

#pragma once

#include <string>
#include <string_view>

namespace zrsheet {

/// The text with each byte that belongs to no well-formed UTF-8 character replaced by U+FFFD. Linear.
[[nodiscard]] std::string ValidUtf8(std::string_view text);

/// ValidUtf8 in one line: characters that no document may hold (controls, U+FFFE, U+FFFF) become spaces, and
/// spaces at the ends are gone. May be empty.
[[nodiscard]] std::string OneLine(std::string_view text);

}  // namespace zrsheet
