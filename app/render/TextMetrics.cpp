#include "app/render/TextMetrics.h"

#include <pango/pangocairo.h>

#include <memory>

namespace zrsheet {
namespace {

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
struct FreeFont {
    void operator()(PangoFontDescription* font) const { pango_font_description_free(font); }
};
using LayoutPtr = std::unique_ptr<PangoLayout, Unref>;
using ContextPtr = std::unique_ptr<PangoContext, Unref>;
using FontPtr = std::unique_ptr<PangoFontDescription, FreeFont>;

/// A line of text set without rounding to whole pixels, so that widths grow evenly with the size. The font map behind
/// it belongs to the calling thread.
class TextLine {
public:
    TextLine(double size, bool bold) : m_context(pango_font_map_create_context(pango_cairo_font_map_get_default())) {
        cairo_font_options_t* options = cairo_font_options_create();
        cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
        cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
        pango_cairo_context_set_font_options(m_context.get(), options);
        cairo_font_options_destroy(options);
        pango_context_set_round_glyph_positions(m_context.get(), FALSE);
        const FontPtr font(pango_font_description_new());
        pango_font_description_set_family(font.get(), kFontFamily);
        pango_font_description_set_weight(font.get(), bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
        pango_font_description_set_absolute_size(font.get(), size * PANGO_SCALE);
        m_layout.reset(pango_layout_new(m_context.get()));
        pango_layout_set_font_description(m_layout.get(), font.get());
        pango_layout_set_single_paragraph_mode(m_layout.get(), TRUE);
    }

    void SetText(std::string_view text) {
        pango_layout_set_text(m_layout.get(), text.data(), static_cast<int>(text.size()));
    }

    double Width() const {
        PangoRectangle logical;
        pango_layout_get_extents(m_layout.get(), nullptr, &logical);
        return static_cast<double>(logical.width) / PANGO_SCALE;
    }

    double Baseline() const { return static_cast<double>(pango_layout_get_baseline(m_layout.get())) / PANGO_SCALE; }

    /// From the baseline to the top of what is drawn.
    double InkHeight() const {
        PangoRectangle ink;
        pango_layout_get_extents(m_layout.get(), &ink, nullptr);
        return Baseline() - static_cast<double>(ink.y) / PANGO_SCALE;
    }

private:
    ContextPtr m_context;
    LayoutPtr m_layout;
};

/// The number of bytes before which UTF-8 may be cut: the beginnings of characters.
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
    return line.Width();
}

double TextAscent(double size, bool bold) {
    TextLine line(size, bold);
    line.SetText("X");
    return line.Baseline();
}

double CapHeight(double size, bool bold) {
    TextLine line(size, bold);
    line.SetText("X");
    return line.InkHeight();
}

// Widths grow with the length, so the longest beginning that fits is found by halving.
std::string Ellipsize(std::string_view text, double size, double maxWidth, bool bold) {
    TextLine line(size, bold);
    line.SetText(text);
    if (line.Width() <= maxWidth) return std::string(text);
    const std::string ellipsis = "\u2026";
    const auto fits = [&](std::size_t length) {
        line.SetText(std::string(text.substr(0, length)) + ellipsis);
        return line.Width() <= maxWidth;
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
