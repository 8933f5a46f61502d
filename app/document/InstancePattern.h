// Selects instances by name or by path.

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zrsheet {

/// Does `text` match? `*` stands for any characters, `?` for one, everything else for itself; upper and lower
/// case of ASCII letters are alike. O(length x stars).
[[nodiscard]] bool MatchesGlob(std::string_view text, std::string_view pattern);

/// A pattern with a slash is held against the instance's path and those of the assemblies above it, one
/// without against their names: to select an assembly is to select all in it.
[[nodiscard]] bool IsSelected(std::string_view path, const std::vector<std::string>& patterns);

}  // namespace zrsheet
