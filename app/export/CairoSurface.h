// Bitmaps that cairo draws on and from.

#pragma once

#include <cairo/cairo.h>

#include <memory>

#include "app/render/Raster.h"

namespace zrsheet {

struct SurfaceRelease {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using SurfacePtr = std::unique_ptr<cairo_surface_t, SurfaceRelease>;

/// Throws ExportError when that is too large.
[[nodiscard]] SurfacePtr NewSurface(int width, int height);
[[nodiscard]] SurfacePtr ToSurface(const Raster& raster);
[[nodiscard]] Raster ToRaster(cairo_surface_t* surface);

}  // namespace zrsheet
