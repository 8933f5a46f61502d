// A line of text in the sheet's font, to be measured or drawn.

#pragma once

#include <pango/pangocairo.h>

#include <memory>
#include <string_view>

namespace zrsheet {

/// Set without rounding to whole pixels, so that widths grow evenly with the size. Stays with the thread that
/// made it.
class TextLine {
public:
    /// `size` in pixels.
    TextLine(double size, bool bold);

    /// Cleans it: see CleanText.
    void SetText(std::string_view text);

    double GetWidth() const;
    /// From the top of the line to the baseline.
    double GetAscent() const;
    /// From the baseline to the top of what the text draws.
    double GetInkHeight() const;

    /// Draws the text with its baseline beginning at the place, in the colour that `cairo` has.
    void Draw(cairo_t* cairo, double x, double y) const;

private:
    struct Unref {
        void operator()(gpointer object) const { g_object_unref(object); }
    };

    std::unique_ptr<PangoContext, Unref> m_context;
    std::unique_ptr<PangoLayout, Unref> m_layout;
};

}  // namespace zrsheet
