// A picture in memory.

#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zrsheet {

/// RGB, 8 bits a channel, rows from the top, no padding.
struct Raster {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;

    friend bool operator==(const Raster&, const Raster&) = default;
};

/// The picture as a PNG file: equal pictures give equal bytes. Throws std::runtime_error when the picture is
/// empty or memory runs out. Any thread.
[[nodiscard]] std::string EncodePng(const Raster& raster);

}  // namespace zrsheet
