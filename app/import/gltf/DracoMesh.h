// Unpacks geometry of KHR_draco_mesh_compression.

#pragma once

#include <cstdint>
#include <string_view>

#include "app/import/reading/TriangleList.h"

namespace zrsheet {

/// The triangles; `positions` is the id of the attribute that holds the places of the vertices.
/// Throws ImportError if the bytes are damaged or hold no such attribute.
[[nodiscard]] TriangleList UnpackDraco(std::string_view bytes, std::uint32_t positions);

}  // namespace zrsheet
