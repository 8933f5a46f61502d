#include "app/render/TextMetrics.h"

#include <cstddef>

#include "app/render/CleanText.h"
#include "app/render/TextLine.h"

namespace zrsheet {
namespace {

/// May UTF-8 be cut before this byte?
bool IsCharacterStart(std::string_view text, std::size_t at) {
    return at >= text.size() || (static_cast<unsigned char>(text[at]) & 0xC0U) != 0x80U;
}

std::size_t CutBefore(std::string_view text, std::size_t at) {
    while (!IsCharacterStart(text, at)) --at;
    return at;
}

}  // namespace

double TextWidth(std::string_view text, double size, bool bold) {
    TextLine line(size, bold);
    line.SetText(text);
    return line.GetWidth();
}

double TextAscent(double size, bool bold) {
    TextLine line(size, bold);
    line.SetText("X");
    return line.GetAscent();
}

double CapHeight(double size, bool bold) {
    TextLine line(size, bold);
    line.SetText("X");
    return line.GetInkHeight();
}

// Widths grow with the length, so the longest beginning that fits is found by halving.
std::string Ellipsize(std::string_view text, double size, double maxWidth, bool bold) {
    const std::string clean = CleanText(text);
    TextLine line(size, bold);
    const auto fits = [&](const std::string& candidate) {
        line.SetText(candidate);
        return line.GetWidth() <= maxWidth;
    };
    if (fits(clean)) return clean;
    const std::string ellipsis = "\u2026";
    if (!fits(ellipsis)) return {};
    std::size_t good = 0;
    std::size_t bad = clean.size();
    while (good + 1 < bad) {
        const std::size_t middle = good + (bad - good) / 2;
        (fits(clean.substr(0, CutBefore(clean, middle)) + ellipsis) ? good : bad) = middle;
    }
    good = CutBefore(clean, good);
    while (good > 0 && clean[good - 1] == ' ') --good;
    return clean.substr(0, good) + ellipsis;
}

}  // namespace zrsheet
