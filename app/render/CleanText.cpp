#include "app/render/CleanText.h"

#include <cstddef>
#include <cstdint>

namespace zrsheet {
namespace {

struct Decoded {
    std::uint32_t character = 0;
    std::size_t bytes = 0;  // 0: not UTF-8
};

std::size_t LengthFrom(unsigned char lead) {
    if (lead < 0x80U) return 1;
    if (lead >= 0xC2U && lead < 0xE0U) return 2;
    if (lead >= 0xE0U && lead < 0xF0U) return 3;
    return lead >= 0xF0U && lead < 0xF5U ? 4 : 0;
}

Decoded DecodeFirst(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text[0]);
    const std::size_t length = LengthFrom(lead);
    if (length == 1) return {lead, 1};
    if (length == 0 || length > text.size()) return {};
    std::uint32_t character = lead & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[i]);
        if ((next & 0xC0U) != 0x80U) return {};
        character = (character << 6U) | (next & 0x3FU);
    }
    const bool isOverlong = (length == 3 && character < 0x800U) || (length == 4 && character < 0x10000U);
    const bool isSurrogate = character >= 0xD800U && character < 0xE000U;
    if (isOverlong || isSurrogate || character > 0x10FFFFU) return {};
    return {character, length};
}

bool IsBreak(std::uint32_t c) { return c == '\t' || c == '\n' || c == '\r'; }

bool IsDropped(std::uint32_t c) {
    return c < 0x20U || (c >= 0x7FU && c < 0xA0U) || c == 0xFFFEU || c == 0xFFFFU;
}

}  // namespace

std::string CleanText(std::string_view text) {
    std::string clean;
    while (!text.empty()) {
        const Decoded first = DecodeFirst(text);
        if (first.bytes == 0) {
            clean += "\uFFFD";
        } else if (IsBreak(first.character)) {
            clean += ' ';
        } else if (!IsDropped(first.character)) {
            clean += text.substr(0, first.bytes);
        }
        text.remove_prefix(first.bytes == 0 ? 1 : first.bytes);
    }
    return clean;
}

}  // namespace zrsheet
