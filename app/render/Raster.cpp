#include "app/render/Raster.h"

#include <png.h>

#include <stdexcept>

namespace zrsheet {

std::string EncodePng(const Raster& raster) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(raster.width);
    image.height = static_cast<png_uint_32>(raster.height);
    image.format = PNG_FORMAT_RGB;
    std::string bytes(PNG_IMAGE_PNG_SIZE_MAX(image), '\0');
    png_alloc_size_t size = bytes.size();
    if (png_image_write_to_memory(&image, bytes.data(), &size, 0, raster.pixels.data(), 0, nullptr) == 0) {
        throw std::runtime_error(std::string("The picture could not be encoded: ") + image.message);
    }
    bytes.resize(size);
    return bytes;
}

}  // namespace zrsheet
