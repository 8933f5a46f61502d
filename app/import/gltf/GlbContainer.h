// Takes a glTF file apart: the binary container (.glb), or JSON alone (.gltf).

#pragma once

#include <optional>
#include <string_view>

namespace zrsheet {

/// Both lie inside the file's bytes.
struct GlbContainer {
    std::string_view json;
    std::optional<std::string_view> binary;
};

/// Told by the content, not by the file's name. Throws ImportError if the bytes are neither or cut off.
[[nodiscard]] GlbContainer OpenContainer(std::string_view bytes);

}  // namespace zrsheet
