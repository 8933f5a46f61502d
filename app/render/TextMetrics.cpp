#include "app/render/TextMetrics.h"

#include <cstddef>

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
    TextLine line(size, bold);
    line.SetText(text);
    if (line.GetWidth() <= maxWidth) return std::string(text);
    const std::string ellipsis = "\u2026";
    const auto fits = [&](std::size_t length) {
        line.SetText(std::string(text.substr(0, length)) + ellipsis);
        return line.GetWidth() <= maxWidth;
    };
    if (!fits(0)) return {};
    std::size_t good = 0;
    std::size_t bad = text.size();
    while (good + 1 < bad) {
        const std::size_t middle = good + (bad - good) / 2;
        (fits(CutBefore(text, middle)) ? good : bad) = middle;
    }
    good = CutBefore(text, good);
    while (good > 0 && text[good - 1] == ' ') --good;
    return std::string(text.substr(0, good)) + ellipsis;
}

}  // namespace zrsheet
