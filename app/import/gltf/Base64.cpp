#include "app/import/gltf/Base64.h"

#include <cstdint>

namespace zrsheet {

std::optional<std::string> DecodeBase64(std::string_view text) {
    constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    while (text.ends_with('=')) text.remove_suffix(1);
    std::string bytes;
    bytes.reserve(text.size() * 3 / 4);
    std::uint32_t bits = 0;
    unsigned count = 0;
    for (const char character : text) {
        const std::size_t digit = kDigits.find(character);
        if (digit == std::string_view::npos) return std::nullopt;
        bits = bits << 6 | static_cast<std::uint32_t>(digit);
        count += 6;
        if (count < 8) continue;
        count -= 8;
        bytes += static_cast<char>(bits >> count & 0xFF);
    }
    return bytes;
}

}  // namespace zrsheet
