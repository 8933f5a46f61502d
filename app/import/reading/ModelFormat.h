// Tells by its content which format a model file has; extensions lie.

#pragma once

#include <string_view>

namespace zrsheet {

enum class ModelFormat { Unknown, Gltf, Step, Iges, Stl };

/// Looks at the first bytes, and for STL without a word of text in it at the length. Any bytes. Linear in the
/// blank lines and comments at the start.
[[nodiscard]] ModelFormat FormatOf(std::string_view bytes);

}  // namespace zrsheet
