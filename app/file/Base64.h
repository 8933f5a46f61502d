// Bytes as text that any file of text can carry.

#pragma once

#include <string>
#include <string_view>

namespace zrsheet {

/// With padding, without line breaks.
[[nodiscard]] std::string Base64(std::string_view bytes);

}  // namespace zrsheet
