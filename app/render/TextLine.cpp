#include "app/render/TextLine.h"

#include <cmath>
#include <string>

#include "app/render/CleanText.h"
#include "app/render/TextMetrics.h"

namespace zrsheet {
namespace {

double ToPixels(int units) { return static_cast<double>(units) / PANGO_SCALE; }

void SetFont(PangoLayout* layout, double size, bool bold) {
    PangoFontDescription* font = pango_font_description_new();
    pango_font_description_set_family_static(font, kFontFamily);
    pango_font_description_set_weight(font, bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_font_description_set_absolute_size(font, std::round(size * PANGO_SCALE));
    pango_layout_set_font_description(layout, font);
    pango_font_description_free(font);
}

void SetUnhinted(PangoContext* context) {
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    pango_cairo_context_set_font_options(context, options);
    cairo_font_options_destroy(options);
    pango_context_set_round_glyph_positions(context, FALSE);
}

}  // namespace

// The default font map is a thread's own.
TextLine::TextLine(double size, bool bold)
    : m_context(pango_font_map_create_context(pango_cairo_font_map_get_default())) {
    SetUnhinted(m_context.get());
    m_layout.reset(pango_layout_new(m_context.get()));
    pango_layout_set_single_paragraph_mode(m_layout.get(), TRUE);
    SetFont(m_layout.get(), size, bold);
}

void TextLine::SetText(std::string_view text) {
    const std::string clean = CleanText(text);
    pango_layout_set_text(m_layout.get(), clean.data(), static_cast<int>(clean.size()));
}

double TextLine::GetWidth() const {
    PangoRectangle logical;
    pango_layout_get_extents(m_layout.get(), nullptr, &logical);
    return ToPixels(logical.width);
}

double TextLine::GetAscent() const { return ToPixels(pango_layout_get_baseline(m_layout.get())); }

double TextLine::GetInkHeight() const {
    PangoRectangle ink;
    pango_layout_get_extents(m_layout.get(), &ink, nullptr);
    return GetAscent() - ToPixels(ink.y);
}

void TextLine::Draw(cairo_t* cairo, double x, double y) const {
    cairo_move_to(cairo, x, y - GetAscent());
    pango_cairo_show_layout(cairo, m_layout.get());
}

}  // namespace zrsheet
