// Reads the text of a project file without trusting it.

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "app/project/ProjectData.h"

namespace zrsheet {

/// Checks everything: types, ranges, finite numbers, members that are missing or not known, names and numbers
/// that are used twice or name nothing. Throws UserError, one line that begins with `file` and says where in
/// it, what, and what to do. Linear, up to logarithms.
[[nodiscard]] ProjectData ReadProject(std::string_view text, const std::string& file);

/// The same for text that stands in no file. Throws ProjectFault.
[[nodiscard]] ProjectData ParseProject(std::string_view text);

/// The version of the format that the text claims; empty when it is no project. Reads the beginning only.
[[nodiscard]] std::optional<unsigned> ProjectVersionOf(std::string_view text);

/// Throws UserError when the text is no project or of a version that this program does not know.
void CheckProjectVersion(std::string_view text, const std::string& file);

}  // namespace zrsheet
