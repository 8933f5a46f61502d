// Text as fonts can set it and as XML can carry it.

#pragma once

#include <string>
#include <string_view>

namespace zrsheet {

/// UTF-8 of nothing but characters that XML allows: control characters are dropped, line breaks and tabs
/// become spaces, bytes that are not UTF-8 become U+FFFD.
[[nodiscard]] std::string CleanText(std::string_view text);

}  // namespace zrsheet
