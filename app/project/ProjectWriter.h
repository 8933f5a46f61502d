// Writes projects as the text of a file.

#pragma once

#include <string>

#include "app/project/ProjectData.h"

namespace zrsheet {

/// JSON whose bytes depend on nothing but the data, one line for each part, item or callout; numbers come
/// back exactly. Bytes that belong to no character become U+FFFD. Throws UserError for a number that is not
/// finite. Linear.
[[nodiscard]] std::string WriteProject(const ProjectData& project);

}  // namespace zrsheet
