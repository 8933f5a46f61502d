// The areas that the parts show in the picture: their sizes and their outlines.

#pragma once

#include <cstddef>
#include <vector>

#include "app/lineart/LineArt.h"
#include "app/lineart/PartRaster.h"

namespace zrsheet {

/// How many square pixels of each of `count` parts are seen.
[[nodiscard]] std::vector<double> AreaSizes(const PartRaster& raster, std::size_t count);

/// By part; specks are left out. The same for any number of threads.
[[nodiscard]] std::vector<VisibleArea> AreaOutlines(const PartRaster& raster, std::size_t count,
                                                    unsigned threads);

}  // namespace zrsheet
