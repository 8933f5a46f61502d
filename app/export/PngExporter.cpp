#include "app/export/PngExporter.h"

#include <cairo/cairo.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <numbers>
#include <vector>

#include "app/export/ExportError.h"
#include "app/export/SheetDrawing.h"
#include "app/render/TextLine.h"

namespace zrsheet {
namespace {

struct SurfaceRelease {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using SurfacePtr = std::unique_ptr<cairo_surface_t, SurfaceRelease>;

SurfacePtr NewSurface(int width, int height) {
    SurfacePtr surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height));
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) {
        throw ExportError("Cannot draw a bitmap of " + std::to_string(width) + " x " +
                          std::to_string(height) +
                          " pixels: that is too large. Choose a smaller page or a smaller scale.");
    }
    return surface;
}

/// The pixels of row `y`, each 0xRRGGBB.
std::uint32_t* RowOf(cairo_surface_t* surface, int y) {
    unsigned char* data = cairo_image_surface_get_data(surface);
    return reinterpret_cast<std::uint32_t*>(data + static_cast<std::ptrdiff_t>(y) *
                                                       cairo_image_surface_get_stride(surface));
}

SurfacePtr ToSurface(const Raster& raster) {
    SurfacePtr surface = NewSurface(raster.width, raster.height);
    cairo_surface_flush(surface.get());
    const std::uint8_t* from = raster.pixels.data();
    for (int y = 0; y < raster.height; ++y) {
        std::uint32_t* row = RowOf(surface.get(), y);
        for (int x = 0; x < raster.width; ++x, from += 3) {
            row[x] = (std::uint32_t{from[0]} << 16U) | (std::uint32_t{from[1]} << 8U) | from[2];
        }
    }
    cairo_surface_mark_dirty(surface.get());
    return surface;
}

Raster ToRaster(cairo_surface_t* surface) {
    cairo_surface_flush(surface);
    Raster raster{cairo_image_surface_get_width(surface), cairo_image_surface_get_height(surface), {}};
    raster.pixels.reserve(3 * static_cast<std::size_t>(raster.width) *
                          static_cast<std::size_t>(raster.height));
    for (int y = 0; y < raster.height; ++y) {
        const std::uint32_t* row = RowOf(surface, y);
        for (int x = 0; x < raster.width; ++x) {
            for (const unsigned shift : {16U, 8U, 0U})
                raster.pixels.push_back(static_cast<std::uint8_t>(row[x] >> shift));
        }
    }
    return raster;
}

/// Paints what a drawing consists of.
class Painter {
public:
    Painter(cairo_surface_t* surface, int scale) : m_cairo(cairo_create(surface)) {
        cairo_scale(m_cairo, scale, scale);
        SetColor(kPaperColor);
        cairo_paint(m_cairo);
    }
    Painter(const Painter&) = delete;
    Painter& operator=(const Painter&) = delete;
    ~Painter() { cairo_destroy(m_cairo); }

    void PaintPicture(const Raster& picture, const PageBox& figure) {
        if (picture.pixels.empty()) return;
        const SurfacePtr surface = ToSurface(picture);
        cairo_save(m_cairo);
        cairo_translate(m_cairo, figure.x0, figure.y0);
        cairo_scale(m_cairo, (figure.x1 - figure.x0) / picture.width,
                    (figure.y1 - figure.y0) / picture.height);
        cairo_set_source_surface(m_cairo, surface.get(), 0.0, 0.0);
        cairo_pattern_set_extend(cairo_get_source(m_cairo), CAIRO_EXTEND_PAD);
        cairo_rectangle(m_cairo, 0.0, 0.0, picture.width, picture.height);
        cairo_fill(m_cairo);
        cairo_restore(m_cairo);
    }

    void PaintInset(const SheetInset& inset, const DrawnInset& drawn) {
        for (const DrawnRing& ring : drawn.sourceRings) PaintRing(ring);
        for (const DrawnLine& link : drawn.links) PaintLine(link);
        PaintDisc(drawn.rim);
        cairo_save(m_cairo);
        TraceCircle(drawn.outline.circle);
        cairo_clip(m_cairo);
        PaintPicture(inset.picture, inset.box);
        cairo_restore(m_cairo);
        PaintRing(drawn.outline);
    }

    void PaintCallout(const DrawnCallout& callout) {
        for (const DrawnLeader& leader : callout.leaders) {
            PaintLine(leader.halo);
            if (leader.dotHalo) PaintDisc(*leader.dotHalo);
            if (leader.arrowHalo) PaintArrow(*leader.arrowHalo);
            PaintLine(leader.line);
            if (leader.dot) PaintDisc(*leader.dot);
            if (leader.arrow) PaintArrow(*leader.arrow);
        }
        PaintBalloon(callout.balloon);
        for (const DrawnText& line : callout.label) PaintText(line);
    }

    void PaintLine(const DrawnLine& line) {
        const double dashes[] = {kDash, kDashGap};
        SetColor(line.color);
        cairo_set_line_width(m_cairo, line.width);
        cairo_set_dash(m_cairo, dashes, line.isDashed ? 2 : 0, 0.0);
        cairo_move_to(m_cairo, line.from.x, line.from.y);
        cairo_line_to(m_cairo, line.to.x, line.to.y);
        cairo_stroke(m_cairo);
    }

    void PaintText(const DrawnText& text) {
        TextLine line(text.size, text.isBold);
        line.SetText(text.text);
        const double share = text.align == TextAlign::kLeft     ? 0.0
                             : text.align == TextAlign::kMiddle ? 0.5
                                                                : 1.0;
        SetColor(text.color);
        line.Draw(m_cairo, text.place.x - share * line.GetWidth(), text.place.y);
    }

private:
    void TraceCircle(const SheetCircle& circle) {
        cairo_new_path(m_cairo);
        cairo_arc(m_cairo, circle.centre.x, circle.centre.y, circle.radius, 0.0, 2.0 * std::numbers::pi);
    }

    void PaintDisc(const DrawnDisc& disc) {
        SetColor(disc.color);
        TraceCircle({disc.centre, disc.radius});
        cairo_fill(m_cairo);
    }

    void PaintRing(const DrawnRing& ring) {
        SetColor(ring.color);
        TraceCircle(ring.circle);
        StrokePath(ring.width);
    }

    void TraceCorners(const std::vector<PagePoint>& corners) {
        cairo_new_path(m_cairo);
        for (const PagePoint& corner : corners) cairo_line_to(m_cairo, corner.x, corner.y);
        cairo_close_path(m_cairo);
    }

    void TraceRoundBox(const PageBox& box, double r) {
        const double quarter = 0.5 * std::numbers::pi;
        cairo_new_path(m_cairo);
        cairo_arc(m_cairo, box.x1 - r, box.y0 + r, r, -quarter, 0.0);
        cairo_arc(m_cairo, box.x1 - r, box.y1 - r, r, 0.0, quarter);
        cairo_arc(m_cairo, box.x0 + r, box.y1 - r, r, quarter, 2.0 * quarter);
        cairo_arc(m_cairo, box.x0 + r, box.y0 + r, r, 2.0 * quarter, 3.0 * quarter);
        cairo_close_path(m_cairo);
    }

    void PaintArrow(const DrawnArrow& arrow) {
        SetColor(arrow.color);
        TraceCorners(arrow.corners);
        cairo_fill_preserve(m_cairo);
        if (arrow.lineWidth > 0.0) {
            cairo_set_line_join(m_cairo, CAIRO_LINE_JOIN_ROUND);
            StrokePath(arrow.lineWidth);
            cairo_set_line_join(m_cairo, CAIRO_LINE_JOIN_MITER);
        }
        cairo_new_path(m_cairo);
    }

    void PaintBalloon(const DrawnBalloon& balloon) {
        if (balloon.outline == BalloonOutline::kRound) TraceRoundBox(balloon.box, balloon.radius);
        if (balloon.outline == BalloonOutline::kCorners) TraceCorners(balloon.corners);
        if (balloon.outline != BalloonOutline::kNone) {
            SetColor(kPaperColor);
            cairo_fill_preserve(m_cairo);
            SetColor(balloon.color);
            StrokePath(balloon.lineWidth);
        }
        for (const DrawnLine& rule : balloon.rules) PaintLine(rule);
    }

    void StrokePath(double width) {
        cairo_set_line_width(m_cairo, width);
        cairo_set_dash(m_cairo, nullptr, 0, 0.0);
        cairo_stroke(m_cairo);
    }

    /// "#rrggbb".
    void SetColor(const std::string& color) {
        const unsigned long value = std::strtoul(color.c_str() + 1, nullptr, 16);
        const auto channel = [value](unsigned shift) {
            return static_cast<double>((value >> shift) & 0xFFUL) / 255.0;
        };
        cairo_set_source_rgb(m_cairo, channel(16), channel(8), channel(0));
    }

    cairo_t* m_cairo;
};

}  // namespace

std::string PngBytes(const Sheet& sheet, int scale) {
    const SheetDrawing drawing = DrawSheet(sheet);
    const SurfacePtr surface = NewSurface(static_cast<int>(std::lround(sheet.width * scale)),
                                          static_cast<int>(std::lround(sheet.height * scale)));
    {
        Painter painter(surface.get(), scale);
        painter.PaintPicture(sheet.picture, sheet.figure);
        painter.PaintText(drawing.title);
        for (std::size_t i = 0; i < sheet.insets.size(); ++i)
            painter.PaintInset(sheet.insets[i], drawing.insets[i]);
        for (const DrawnCallout& callout : drawing.callouts) painter.PaintCallout(callout);
        for (const DrawnLine& rule : drawing.tableRules) painter.PaintLine(rule);
        for (const DrawnText& text : drawing.tableTexts) painter.PaintText(text);
    }
    return EncodePng(ToRaster(surface.get()));
}

}  // namespace zrsheet
