// Reads a translated template string piece by piece: literal text and numbered placeholders ("A{0}B{1}").

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zrcallouts {

/// One piece of the string.
struct TemplatePiece {
    bool isPlaceholder = false;
    std::string_view text;  // of a literal piece
    int index = 0;          // of a placeholder; may be negative, which stands for nothing
};

class PlaceholderReader {
public:
    /// Requires: `text` outlives the reader and its pieces.
    explicit PlaceholderReader(std::string_view text) : m_text(text) {}

    /// Fills `piece` with the next piece; false at the end. A lone "{" at the very end is dropped; a
    /// placeholder without "}" makes the last character be read again as text.
    bool Next(TemplatePiece& piece);

private:
    TemplatePiece ReadLiteral(std::size_t end);
    TemplatePiece ReadPlaceholder();

    std::string_view m_text;
    std::size_t m_position = 0;
};

}  // namespace zrcallouts
