#include "app/document/LayoutChoice.h"

#include <fmt/format.h>

#include "app/document/ChoiceWords.h"
#include "app/document/UserError.h"

namespace zrsheet {
namespace {

double Checked(double pixels, double most, std::string_view what) {
    if (!(pixels >= 0.0 && pixels <= most))
        throw UserError(
            fmt::format("'{}' is no {}; use a number of pixels from 0 to {}", pixels, what, most));
    return pixels;
}

}  // namespace

LayoutMode ParseLayoutMode(std::string_view word) {
    return static_cast<LayoutMode>(ParseChoice(word, kLayoutWords, "layout"));
}

zrcallouts::LayoutPattern ParseLayoutPattern(std::string_view word) {
    return static_cast<zrcallouts::LayoutPattern>(ParseChoice(word, kPatternWords, "pattern of labels"));
}

double CheckedDistance(double pixels) {
    return Checked(pixels, kMostDistance, "distance of labels from the model");
}

double CheckedGap(double pixels) { return Checked(pixels, kMostGap, "gap between labels"); }

unsigned CheckedRows(double rows) {
    if (rows != 1.0 && rows != kMostRows)
        throw UserError(fmt::format("'{}' is no number of rows; use 1 or {}", rows, kMostRows));
    return static_cast<unsigned>(rows);
}

}  // namespace zrsheet
