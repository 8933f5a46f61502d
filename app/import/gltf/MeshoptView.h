// Unpacks a view of EXT_meshopt_compression.

#pragma once

#include <string>
#include <string_view>

#include "app/import/gltf/GltfDocument.h"

namespace zrsheet {

/// The unpacked bytes, count * stride of them. Throws ImportError if the packing is none or the bytes are
/// damaged.
[[nodiscard]] std::string UnpackMeshopt(const GltfPacking& packing, std::string_view bytes);

}  // namespace zrsheet
