#include "app/import/gltf/GlbContainer.h"

#include <fmt/format.h>

#include <cstdint>
#include <cstring>

#include "app/import/ImportError.h"

namespace zrsheet {
namespace {

constexpr std::uint32_t kJson = 0x4E4F'534A;
constexpr std::uint32_t kBinary = 0x004E'4942;
constexpr std::size_t kHeaderBytes = 12;
constexpr std::size_t kChunkHeaderBytes = 8;

std::uint32_t Word(std::string_view bytes, std::size_t at) {
    std::uint32_t word = 0;
    std::memcpy(&word, bytes.data() + at, sizeof word);
    return word;
}

GlbContainer OpenGlb(std::string_view bytes) {
    if (bytes.size() < kHeaderBytes || Word(bytes, 8) > bytes.size()) {
        throw ImportError("the file is cut off; copy or export it again");
    }
    if (Word(bytes, 4) != 2)
        throw ImportError(fmt::format("glTF version {} is not 2; export the file again", Word(bytes, 4)));
    GlbContainer container;
    std::string_view left = bytes.substr(0, Word(bytes, 8));
    left.remove_prefix(std::min(kHeaderBytes, left.size()));
    while (left.size() >= kChunkHeaderBytes) {
        const std::size_t length = Word(left, 0);
        const std::uint32_t type = Word(left, 4);
        left.remove_prefix(kChunkHeaderBytes);
        if (length > left.size())
            throw ImportError("a chunk is longer than the file; copy or export it again");
        if (type == kJson && container.json.empty()) container.json = left.substr(0, length);
        if (type == kBinary && !container.binary) container.binary = left.substr(0, length);
        left.remove_prefix(length);
    }
    return container;
}

}  // namespace

GlbContainer OpenContainer(std::string_view bytes) {
    if (bytes.empty()) throw ImportError("the file is empty; export it again");
    if (bytes.starts_with("glTF")) return OpenGlb(bytes);
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    const std::size_t first = bytes.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos || bytes[first] != '{') {
        throw ImportError("this is no glTF file; give a .glb or .gltf file");
    }
    return {bytes, std::nullopt};
}

}  // namespace zrsheet
