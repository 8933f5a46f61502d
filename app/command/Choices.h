// The words that arguments of a fixed choice may be.

#pragma once

#include <span>
#include <string_view>

namespace zrsheet {

/// For MODE (of align, in the order of its numbers), CORNER, LANGUAGE, LAYOUT, PAPER, PATTERN, SHAPE (of
/// balloons), STYLE (of pictures), TERMINATOR and VIEW; nothing for others.
[[nodiscard]] std::span<const std::string_view> ChoicesOf(std::string_view kind);

}  // namespace zrsheet
