#include "app/document/StyleChoices.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <span>

#include "app/document/UserError.h"

namespace zrsheet {
namespace {

std::size_t Parse(std::string_view word, std::span<const std::string_view> words, std::string_view what) {
    const auto found = std::find(words.begin(), words.end(), word);
    if (found != words.end()) return static_cast<std::size_t>(found - words.begin());
    std::string known;
    for (const auto each : words.first(words.size() - 1))
        known += (known.empty() ? "" : ", ") + std::string(each);
    throw UserError(fmt::format("'{}' is no {}; use {} or {}", word, what, known, words.back()));
}

double Checked(double value, double least, double most, std::string_view what,
               std::string_view unit = "pixels") {
    if (value >= least && value <= most) return value;
    throw UserError(fmt::format("{} is no {}; give {} from {} to {}", value, what, unit, least, most));
}

}  // namespace

zrannotations::BalloonShape ParseShape(std::string_view word) {
    return static_cast<zrannotations::BalloonShape>(Parse(word, kShapeWords, "shape of balloons"));
}

zrannotations::Terminator ParseTerminator(std::string_view word) {
    return static_cast<zrannotations::Terminator>(Parse(word, kTerminatorWords, "end of leaders"));
}

bool ParseStack(std::string_view word) {
    static constexpr std::array<std::string_view, 2> kWords{"off", "on"};
    return Parse(word, kWords, "choice of stacks") == 1;
}

double CheckedFontSize(double size) { return Checked(size, kLeastFontSize, kMostFontSize, "font size"); }

double CheckedLineWidth(double width) {
    return Checked(width, kLeastLineWidth, kMostLineWidth, "line width");
}

PictureMode ParsePictureMode(std::string_view word) {
    return static_cast<PictureMode>(Parse(word, kPictureWords, "style of pictures"));
}

double CheckedOutline(double width) {
    return Checked(width, kLeastOutline, kMostOutline, "width of outlines", "millimetres");
}

std::string_view WordOf(zrannotations::BalloonShape shape) {
    return kShapeWords.at(static_cast<std::size_t>(shape));
}

std::string_view WordOf(zrannotations::Terminator terminator) {
    return kTerminatorWords.at(static_cast<std::size_t>(terminator));
}

std::string_view WordOf(PictureMode mode) { return kPictureWords.at(static_cast<std::size_t>(mode)); }

}  // namespace zrsheet
