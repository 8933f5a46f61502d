// Base64, as in data URIs.

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zrsheet {

/// The bytes that the text stands for; nothing if it holds a character that is none of Base64's. Padding may
/// be missing.
[[nodiscard]] std::optional<std::string> DecodeBase64(std::string_view text);

}  // namespace zrsheet
