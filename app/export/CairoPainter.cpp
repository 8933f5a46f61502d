#include "app/export/CairoPainter.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <numbers>
#include <string>
#include <vector>

#include "app/export/CairoSurface.h"
#include "app/render/TextLine.h"

namespace zrsheet {
namespace {

/// "#rrggbb" as red, green and blue from 0 to 1.
std::array<double, 3> ChannelsOf(const std::string& color) {
    const unsigned long value = std::strtoul(color.c_str() + 1, nullptr, 16);
    const auto channel = [value](unsigned shift) {
        return static_cast<double>((value >> shift) & 0xFFUL) / 255.0;
    };
    return {channel(16), channel(8), channel(0)};
}

}  // namespace

CairoPainter::CairoPainter(cairo_t* cairo) : m_cairo(cairo_reference(cairo)) {}

CairoPainter::~CairoPainter() { cairo_destroy(m_cairo); }

void CairoPainter::PaintSheet(const Sheet& sheet, const SheetDrawing& drawing) {
    SetColor(kPaperColor);
    cairo_rectangle(m_cairo, 0.0, 0.0, sheet.width, sheet.height);
    cairo_fill(m_cairo);
    PaintFigure(sheet, drawing);
    if (!drawing.title.text.empty()) PaintText(drawing.title);
    for (std::size_t i = 0; i < sheet.insets.size(); ++i) PaintInset(sheet.insets[i], drawing.insets[i]);
    for (const DrawnCallout& callout : drawing.callouts) PaintCallout(callout);
    PaintForm(drawing.table);
    PaintForm(drawing.frame);
}

void CairoPainter::PaintForm(const DrawnForm& form) {
    for (const DrawnLine& rule : form.rules) PaintLine(rule);
    for (const DrawnText& text : form.texts) {
        if (!text.text.empty()) PaintText(text);
    }
}

void CairoPainter::PaintFigure(const Sheet& sheet, const SheetDrawing& drawing) {
    if (sheet.look.mode == PictureMode::Line) {
        PaintGround(sheet.ground, sheet.figure);
        PaintAreas(sheet.hotspots, sheet.figure);
    }
    PaintPicture(sheet.picture, sheet.figure);
    PaintModel(drawing.model);
}

void CairoPainter::PaintGround(const SheetGround& ground, const PageBox& figure) {
    cairo_pattern_t* pattern = cairo_pattern_create_linear(0.0, figure.y0, 0.0, figure.y1);
    const auto addStop = [pattern](double place, const std::string& color) {
        const auto [red, green, blue] = ChannelsOf(color);
        cairo_pattern_add_color_stop_rgb(pattern, place, red, green, blue);
    };
    addStop(0.0, ground.top);
    addStop(1.0, ground.bottom);
    cairo_set_source(m_cairo, pattern);
    cairo_pattern_destroy(pattern);
    cairo_rectangle(m_cairo, figure.x0, figure.y0, figure.x1 - figure.x0, figure.y1 - figure.y0);
    cairo_fill(m_cairo);
}

void CairoPainter::PaintAreas(const std::vector<SheetHotspot>& hotspots, const PageBox& figure) {
    cairo_save(m_cairo);
    cairo_translate(m_cairo, figure.x0, figure.y0);
    cairo_set_fill_rule(m_cairo, CAIRO_FILL_RULE_EVEN_ODD);
    SetColor(kPaperColor);
    for (const SheetHotspot& hotspot : hotspots) {
        for (const auto& ring : hotspot.rings) {
            for (const ArtPoint& point : ring) cairo_line_to(m_cairo, point.x, point.y);
            cairo_close_path(m_cairo);
        }
        cairo_fill(m_cairo);
    }
    cairo_restore(m_cairo);
}

void CairoPainter::PaintModel(const DrawnModel& model) {
    cairo_save(m_cairo);
    cairo_translate(m_cairo, model.origin.x, model.origin.y);
    cairo_set_line_cap(m_cairo, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(m_cairo, CAIRO_LINE_JOIN_ROUND);
    SetColor(kInkColor);
    for (const DrawnInk& ink : model.inks) {
        const double dashes[] = {kHiddenDash * ink.width, kHiddenGap * ink.width};
        cairo_set_line_width(m_cairo, ink.width);
        cairo_set_dash(m_cairo, dashes, ink.isDashed ? 2 : 0, 0.0);
        for (const ArtLine* line : ink.lines) {
            cairo_new_sub_path(m_cairo);
            for (const ArtPoint& point : line->points) cairo_line_to(m_cairo, point.x, point.y);
            if (line->isClosed) cairo_close_path(m_cairo);
        }
        cairo_stroke(m_cairo);
    }
    cairo_restore(m_cairo);
}

void CairoPainter::PaintPicture(const Raster& picture, const PageBox& figure) {
    if (picture.pixels.empty()) return;
    const SurfacePtr surface = ToSurface(picture);
    cairo_save(m_cairo);
    cairo_translate(m_cairo, figure.x0, figure.y0);
    cairo_scale(m_cairo, (figure.x1 - figure.x0) / picture.width, (figure.y1 - figure.y0) / picture.height);
    cairo_set_source_surface(m_cairo, surface.get(), 0.0, 0.0);
    cairo_pattern_set_extend(cairo_get_source(m_cairo), CAIRO_EXTEND_PAD);
    cairo_rectangle(m_cairo, 0.0, 0.0, picture.width, picture.height);
    cairo_fill(m_cairo);
    cairo_restore(m_cairo);
}

void CairoPainter::PaintInset(const SheetInset& inset, const DrawnInset& drawn) {
    for (const DrawnRing& ring : drawn.sourceRings) PaintRing(ring);
    for (const DrawnLine& link : drawn.links) PaintLine(link);
    PaintDisc(drawn.rim);
    cairo_save(m_cairo);
    TraceCircle(drawn.outline.circle);
    cairo_clip(m_cairo);
    PaintPicture(inset.picture, inset.box);
    PaintModel(drawn.model);
    cairo_restore(m_cairo);
    PaintRing(drawn.outline);
}

void CairoPainter::PaintCallout(const DrawnCallout& callout) {
    for (const DrawnLeader& leader : callout.leaders) {
        PaintLine(leader.halo);
        if (leader.dotHalo) PaintDisc(*leader.dotHalo);
        if (leader.arrowHalo) PaintArrow(*leader.arrowHalo);
        PaintLine(leader.line);
        if (leader.dot) PaintDisc(*leader.dot);
        if (leader.arrow) PaintArrow(*leader.arrow);
    }
    for (const DrawnBalloon& balloon : callout.balloons) PaintBalloon(balloon);
    for (const DrawnText& line : callout.label) PaintText(line);
}

void CairoPainter::PaintLine(const DrawnLine& line) {
    const double dashes[] = {kDash, kDashGap};
    SetColor(line.color);
    cairo_set_line_width(m_cairo, line.width);
    cairo_set_dash(m_cairo, dashes, line.isDashed ? 2 : 0, 0.0);
    cairo_move_to(m_cairo, line.from.x, line.from.y);
    cairo_line_to(m_cairo, line.to.x, line.to.y);
    cairo_stroke(m_cairo);
}

void CairoPainter::PaintText(const DrawnText& text) {
    TextLine line(text.size, text.isBold);
    line.SetText(text.text);
    const double share = text.align == TextAlign::kLeft ? 0.0 : text.align == TextAlign::kMiddle ? 0.5 : 1.0;
    SetColor(text.color);
    line.Draw(m_cairo, text.place.x - share * line.GetWidth(), text.place.y);
}

void CairoPainter::TraceCircle(const SheetCircle& circle) {
    cairo_new_path(m_cairo);
    cairo_arc(m_cairo, circle.centre.x, circle.centre.y, circle.radius, 0.0, 2.0 * std::numbers::pi);
}

void CairoPainter::PaintDisc(const DrawnDisc& disc) {
    SetColor(disc.color);
    TraceCircle({disc.centre, disc.radius});
    cairo_fill(m_cairo);
}

void CairoPainter::PaintRing(const DrawnRing& ring) {
    SetColor(ring.color);
    TraceCircle(ring.circle);
    StrokePath(ring.width);
}

void CairoPainter::TraceCorners(const std::vector<PagePoint>& corners) {
    cairo_new_path(m_cairo);
    for (const PagePoint& corner : corners) cairo_line_to(m_cairo, corner.x, corner.y);
    cairo_close_path(m_cairo);
}

void CairoPainter::TraceRoundBox(const PageBox& box, double r) {
    const double quarter = 0.5 * std::numbers::pi;
    cairo_new_path(m_cairo);
    cairo_arc(m_cairo, box.x1 - r, box.y0 + r, r, -quarter, 0.0);
    cairo_arc(m_cairo, box.x1 - r, box.y1 - r, r, 0.0, quarter);
    cairo_arc(m_cairo, box.x0 + r, box.y1 - r, r, quarter, 2.0 * quarter);
    cairo_arc(m_cairo, box.x0 + r, box.y0 + r, r, 2.0 * quarter, 3.0 * quarter);
    cairo_close_path(m_cairo);
}

void CairoPainter::PaintArrow(const DrawnArrow& arrow) {
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

void CairoPainter::PaintBalloon(const DrawnBalloon& balloon) {
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

void CairoPainter::StrokePath(double width) {
    cairo_set_line_width(m_cairo, width);
    cairo_set_dash(m_cairo, nullptr, 0, 0.0);
    cairo_stroke(m_cairo);
}

void CairoPainter::SetColor(const std::string& color) {
    const auto [red, green, blue] = ChannelsOf(color);
    cairo_set_source_rgb(m_cairo, red, green, blue);
}

}  // namespace zrsheet
