#include "app/import/reading/ModelFormat.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace zrsheet {
namespace {

std::string_view WithoutBlanks(std::string_view text) {
    const std::size_t start = text.find_first_not_of(" \t\r\n");
    return start == std::string_view::npos ? std::string_view() : text.substr(start);
}

std::string_view WithoutComments(std::string_view text) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    text = WithoutBlanks(text);
    while (text.starts_with("/*")) {
        const std::size_t end = text.find("*/");
        if (end == std::string_view::npos) return {};
        text = WithoutBlanks(text.substr(end + 2));
    }
    return text;
}

// Lines of 80 characters, the first of them of the start section: "S      1" in the last eight.
bool IsIges(std::string_view bytes) {
    constexpr std::size_t kSection = 72;
    constexpr std::size_t kLine = 80;
    if (bytes.size() < kLine || bytes[kSection] != 'S') return false;
    const std::string_view number = bytes.substr(kSection + 1, kLine - kSection - 1);
    return number.find_first_not_of(" 01") == std::string_view::npos && number.ends_with('1');
}

bool IsBinaryStl(std::string_view bytes) {
    constexpr std::size_t kHeader = 80;
    constexpr std::size_t kTriangle = 50;
    std::uint32_t count = 0;
    if (bytes.size() < kHeader + sizeof count) return false;
    std::memcpy(&count, bytes.data() + kHeader, sizeof count);
    return bytes.size() == kHeader + sizeof count + std::size_t{count} * kTriangle;
}

}  // namespace

ModelFormat FormatOf(std::string_view bytes) {
    if (bytes.starts_with("glTF")) return ModelFormat::Gltf;
    const std::string_view text = WithoutComments(bytes);
    if (text.starts_with("ISO-10303-21")) return ModelFormat::Step;
    if (text.starts_with("{")) return ModelFormat::Gltf;
    if (IsIges(bytes)) return ModelFormat::Iges;
    if (IsBinaryStl(bytes) || text.starts_with("solid")) return ModelFormat::Stl;
    return ModelFormat::Unknown;
}

}  // namespace zrsheet
