// Reads accessors of a document as numbers.

#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "app/import/gltf/GltfBytes.h"
#include "app/import/gltf/GltfDocument.h"

namespace zrsheet {

/// x, y, z of each element, integers converted and normalized as the accessor says, sparse elements put in.
/// Throws ImportError if it is no VEC3, reaches beyond its bytes, or a number is not finite.
[[nodiscard]] std::vector<float> ReadPositions(const GltfDocument& document, GltfBytes& bytes,
                                               std::size_t accessor);

/// Throws ImportError if the accessor holds anything but unsigned scalars, or reaches beyond its bytes.
[[nodiscard]] std::vector<std::uint32_t> ReadIndices(const GltfDocument& document, GltfBytes& bytes,
                                                     std::size_t accessor);

}  // namespace zrsheet
