#include "app/import/Utf8Text.h"

#include <cstddef>

namespace zrsheet {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

constexpr unsigned char kNone = 0;

bool IsContinuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }

// Length of the well-formed character at the start, 0 if there is none. Only the second byte has a range that
// depends on the first: it keeps out long forms, surrogates and what lies beyond U+10FFFF.
std::size_t CharacterLength(std::string_view text) {
    const auto at = [text](std::size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : kNone;
    };
    const unsigned char first = at(0);
    const unsigned char second = at(1);
    if (first < 0x80) return 1;
    if (first < 0xC2 || first > 0xF4 || !IsContinuation(second)) return 0;
    if (first < 0xE0) return 2;
    if ((first == 0xE0 && second < 0xA0) || (first == 0xED && second > 0x9F)) return 0;
    if (!IsContinuation(at(2))) return 0;
    if (first < 0xF0) return 3;
    if ((first == 0xF0 && second < 0x90) || (first == 0xF4 && second > 0x8F)) return 0;
    return IsContinuation(at(3)) ? 4 : 0;
}

bool IsUnprintable(std::string_view character) {
    const auto first = static_cast<unsigned char>(character[0]);
    return first < 0x20 || first == 0x7F ||
           (first == 0xC2 && static_cast<unsigned char>(character[1]) < 0xA0) ||
           character == "\xEF\xBF\xBE" || character == "\xEF\xBF\xBF";
}

}  // namespace

std::string ValidUtf8(std::string_view text) {
    std::string valid;
    valid.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = CharacterLength(text);
        valid += length == 0 ? kReplacement : text.substr(0, length);
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return valid;
}

std::string OneLine(std::string_view text) {
    const std::string valid = ValidUtf8(text);
    std::string line;
    for (std::string_view left = valid; !left.empty();) {
        const std::string_view character = left.substr(0, CharacterLength(left));
        line += IsUnprintable(character) ? std::string_view(" ") : character;
        left.remove_prefix(character.size());
    }
    const std::size_t first = line.find_first_not_of(' ');
    if (first == std::string::npos) return {};
    return line.substr(first, line.find_last_not_of(' ') - first + 1);
}

}  // namespace zrsheet
