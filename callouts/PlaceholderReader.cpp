#include "callouts/PlaceholderReader.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace zrcallouts {
namespace {

// As many digits as there are up to the first other character; none is 0. A number too large for an index
// names no content, just as the largest one does.
int LeadingInteger(std::string_view digits) {
    if (digits.starts_with('+')) digits.remove_prefix(1);
    int value = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (result.ec != std::errc::result_out_of_range) return value;
    return digits.starts_with('-') ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
}

}  // namespace

bool PlaceholderReader::Next(TemplatePiece& piece) {
    if (m_position >= m_text.size()) return false;
    const std::size_t brace = std::min(m_text.find('{', m_position), m_text.size());
    if (brace != m_position) {
        piece = ReadLiteral(brace);
        return true;
    }
    if (m_text.size() - m_position < 2) return false;
    piece = ReadPlaceholder();
    return true;
}

TemplatePiece PlaceholderReader::ReadLiteral(std::size_t end) {
    const TemplatePiece piece{false, m_text.substr(m_position, end - m_position), 0};
    m_position = end;
    return piece;
}

TemplatePiece PlaceholderReader::ReadPlaceholder() {
    const TemplatePiece piece{true, {}, LeadingInteger(m_text.substr(m_position + 1))};
    const std::size_t close = m_text.find('}', m_position);
    m_position = close == std::string_view::npos ? m_text.size() - 1 : close + 1;
    return piece;
}

}  // namespace zrcallouts
