// Paints a sheet onto anything that cairo draws on: bitmaps, or pages of vectors.

#pragma once

#include <cairo/cairo.h>

#include "app/export/SheetDrawing.h"
#include "app/sheet/Sheet.h"

namespace zrsheet {

/// Stays with the thread that made it.
class CairoPainter {
public:
    /// Takes a share in `cairo`, whose user space is page pixels from then on until the painter goes.
    explicit CairoPainter(cairo_t* cairo);
    CairoPainter(const CairoPainter&) = delete;
    CairoPainter& operator=(const CairoPainter&) = delete;
    ~CairoPainter();

    /// Everything from the paper on. Throws ExportError when a picture is too large for cairo.
    void PaintSheet(const Sheet& sheet, const SheetDrawing& drawing);
    void PaintForm(const DrawnForm& form);

private:
    void PaintFigure(const Sheet& sheet, const SheetDrawing& drawing);
    void PaintGround(const SheetGround& ground, const PageBox& figure);
    void PaintAreas(const std::vector<SheetHotspot>& hotspots, const PageBox& figure);
    void PaintModel(const DrawnModel& model);
    void PaintPicture(const Raster& picture, const PageBox& figure);
    void PaintInset(const SheetInset& inset, const DrawnInset& drawn);
    void PaintCallout(const DrawnCallout& callout);
    void PaintLine(const DrawnLine& line);
    void PaintText(const DrawnText& text);
    void PaintDisc(const DrawnDisc& disc);
    void PaintRing(const DrawnRing& ring);
    void PaintArrow(const DrawnArrow& arrow);
    void PaintBalloon(const DrawnBalloon& balloon);
    void TraceCircle(const SheetCircle& circle);
    void TraceCorners(const std::vector<PagePoint>& corners);
    void TraceRoundBox(const PageBox& box, double radius);
    void StrokePath(double width);
    void SetColor(const std::string& color);

    cairo_t* m_cairo;
};

}  // namespace zrsheet
