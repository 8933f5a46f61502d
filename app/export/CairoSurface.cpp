#include "app/export/CairoSurface.h"

#include <cstddef>
#include <cstdint>
#include <string>

#include "app/export/ExportError.h"

namespace zrsheet {
namespace {

/// The pixels of row `y`, each 0xRRGGBB.
std::uint32_t* RowOf(cairo_surface_t* surface, int y) {
    unsigned char* data = cairo_image_surface_get_data(surface);
    return reinterpret_cast<std::uint32_t*>(data + static_cast<std::ptrdiff_t>(y) *
                                                       cairo_image_surface_get_stride(surface));
}

}  // namespace

SurfacePtr NewSurface(int width, int height) {
    SurfacePtr surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height));
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) {
        throw ExportError("Cannot draw a bitmap of " + std::to_string(width) + " x " +
                          std::to_string(height) +
                          " pixels: that is too large. Choose a smaller page or a smaller scale.");
    }
    return surface;
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

}  // namespace zrsheet
