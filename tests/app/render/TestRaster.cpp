#include "app/render/Raster.h"

#include <gtest/gtest.h>
#include <png.h>

#include <stdexcept>

namespace zrsheet {
namespace {

Raster Decode(const std::string& bytes) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_memory(&image, bytes.data(), bytes.size()) == 0) return {};
    image.format = PNG_FORMAT_RGB;
    Raster raster{static_cast<int>(image.width), static_cast<int>(image.height), {}};
    raster.pixels.resize(PNG_IMAGE_SIZE(image));
    png_image_finish_read(&image, nullptr, raster.pixels.data(), 0, nullptr);
    return raster;
}

TEST(Raster, ComesBackFromPngAsItWas) {
    Raster raster{31, 7, {}};
    for (int i = 0; i < 31 * 7 * 3; ++i) raster.pixels.push_back(static_cast<std::uint8_t>(i * 89));
    EXPECT_TRUE(Decode(EncodePng(raster)) == raster);
}

TEST(Raster, WithoutPixelsCannotBeEncoded) { EXPECT_THROW((void)EncodePng(Raster()), std::runtime_error); }

}  // namespace
}  // namespace zrsheet
