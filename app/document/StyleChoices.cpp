#include "app/document/StyleChoices.h"

#include <fmt/format.h>

#include <cstddef>

#include "app/document/ChoiceWords.h"
#include "app/document/UserError.h"

namespace zrsheet {
namespace {

double Checked(double value, double least, double most, std::string_view what,
               std::string_view unit = "pixels") {
    if (value >= least && value <= most) return value;
    throw UserError(fmt::format("{} is no {}; give {} from {} to {}", value, what, unit, least, most));
}

}  // namespace

zrannotations::BalloonShape ParseShape(std::string_view word) {
    return static_cast<zrannotations::BalloonShape>(ParseChoice(word, kShapeWords, "shape of balloons"));
}

zrannotations::Terminator ParseTerminator(std::string_view word) {
    return static_cast<zrannotations::Terminator>(ParseChoice(word, kTerminatorWords, "end of leaders"));
}

bool ParseStack(std::string_view word) {
    static constexpr std::array<std::string_view, 2> kWords{"off", "on"};
    return ParseChoice(word, kWords, "choice of stacks") == 1;
}

double CheckedFontSize(double size) { return Checked(size, kLeastFontSize, kMostFontSize, "font size"); }

double CheckedLineWidth(double width) {
    return Checked(width, kLeastLineWidth, kMostLineWidth, "line width");
}

PictureMode ParsePictureMode(std::string_view word) {
    return static_cast<PictureMode>(ParseChoice(word, kPictureWords, "style of pictures"));
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
