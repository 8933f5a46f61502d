#include "app/export/PngExporter.h"

#include <cmath>

#include "app/export/CairoPainter.h"
#include "app/export/CairoSurface.h"
#include "app/export/SheetDrawing.h"

namespace zrsheet {

std::string PngBytes(const Sheet& sheet, int scale) {
    const SurfacePtr surface = NewSurface(static_cast<int>(std::lround(sheet.width * scale)),
                                          static_cast<int>(std::lround(sheet.height * scale)));
    cairo_t* cairo = cairo_create(surface.get());
    cairo_scale(cairo, scale, scale);
    CairoPainter painter(cairo);
    cairo_destroy(cairo);
    painter.PaintSheet(sheet, DrawSheet(sheet));
    return EncodePng(ToRaster(surface.get()));
}

}  // namespace zrsheet
