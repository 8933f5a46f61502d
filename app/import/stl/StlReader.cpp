#include "app/import/stl/StlReader.h"

#include <fmt/format.h>

#include <charconv>
#include <cmath>
#include <cstring>
#include <numeric>
#include <string>
#include <string_view>
#include <utility>

#include "app/import/ImportError.h"
#include "app/import/Utf8Text.h"
#include "app/import/reading/AssemblyTree.h"
#include "app/import/reading/PartBuilder.h"
#include "app/import/reading/ReadFile.h"

namespace zrsheet {
namespace {

constexpr float kMetres = 0.001F;
constexpr std::size_t kHeader = 80;
constexpr std::size_t kStart = kHeader + sizeof(std::uint32_t);
constexpr std::size_t kTriangle = 50;  // a normal, three corners, two bytes for anything
constexpr std::size_t kNormal = 12;
constexpr std::size_t kCorners = 36;

bool IsBinary(std::string_view bytes) {
    std::uint32_t count = 0;
    if (bytes.size() < kStart) return false;
    std::memcpy(&count, bytes.data() + kHeader, sizeof count);
    return bytes.size() == kStart + std::size_t{count} * kTriangle;
}

std::vector<float> BinaryCorners(std::string_view bytes) {
    std::vector<float> corners((bytes.size() - kStart) / kTriangle * 9);
    for (std::size_t i = 0; i * 9 < corners.size(); ++i)
        std::memcpy(&corners[i * 9], bytes.data() + kStart + i * kTriangle + kNormal, kCorners);
    return corners;
}

std::string_view TakeWord(std::string_view& text) {
    constexpr const char* kBlanks = " \t\r\n";
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    const std::string_view word = text.substr(0, text.find_first_of(kBlanks));
    text.remove_prefix(word.size());
    return word;
}

std::vector<float> TextCorners(std::string_view text) {
    std::vector<float> corners;
    for (std::string_view word = TakeWord(text); !word.empty(); word = TakeWord(text)) {
        if (word != "vertex") continue;
        for (int axis = 0; axis < 3; ++axis) {
            word = TakeWord(text);
            if (word.starts_with("+")) word.remove_prefix(1);
            float number = 0.0F;
            if (std::from_chars(word.data(), word.data() + word.size(), number).ec != std::errc())
                throw ImportError(fmt::format("vertex {} is damaged; export it again", corners.size() / 3));
            corners.push_back(number);
        }
    }
    return corners;
}

std::string NameIn(std::string_view text) {
    constexpr std::string_view kMark = "solid";
    if (!text.starts_with(kMark)) return {};
    text = text.substr(0, text.find_first_of("\r\n"));
    return OneLine(text.substr(kMark.size()));
}

}  // namespace

Assembly ReadStl(const std::filesystem::path& file) {
    const std::string bytes = ReadFile(file);
    const bool isBinary = IsBinary(bytes);
    TriangleList list{isBinary ? BinaryCorners(bytes) : TextCorners(bytes), {}};
    if (list.positions.size() % 9 != 0) throw ImportError("its last triangle is cut off; export it again");
    for (std::size_t i = 0; i < list.positions.size(); ++i) {
        list.positions[i] *= kMetres;
        if (!std::isfinite(list.positions[i]))
            throw ImportError(fmt::format("vertex {} lies beyond all numbers; export it again", i / 3));
    }
    list.indices.resize(list.positions.size() / 3);
    std::iota(list.indices.begin(), list.indices.end(), 0U);
    PartBuilder builder;
    builder.Add(list);
    Assembly assembly;
    AssemblyNode node;
    node.name = isBinary ? std::string() : NameIn(bytes);
    if (node.name.empty()) node.name = OneLine(file.stem().string());
    node.matrix = {1, 0, 0, 0, 0, 0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1};
    assembly.parts.push_back(builder.Take());
    if (!assembly.parts.front().indices.empty()) node.part = 0;
    assembly.nodes.push_back(std::move(node));
    FinishTree(assembly);
    return assembly;
}

}  // namespace zrsheet
