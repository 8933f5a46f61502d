// From the JSON text of a glTF file to a document.

#pragma once

#include <string_view>

#include "app/import/gltf/GltfDocument.h"

namespace zrsheet {

/// Throws ImportError, without the file's name, if the text is no glTF 2.0, an index points outside its
/// table, or the file requires an extension that would change the geometry and is not known here. Any thread.
[[nodiscard]] GltfDocument ParseGltf(std::string_view json);

}  // namespace zrsheet
