// The sheet as a picture that people can search, select and edit.

#pragma once

#include <string>

#include "app/sheet/Sheet.h"

namespace zrsheet {

/// SVG: the model's picture embedded, everything else vectors and real text. Every callout is a group of
/// class `callout` whose id is unique, with its item and its leaders' instances (separated by '|') as data;
/// inside, a group of class `leader` for each leader and one of class `label`. Equal sheets give equal bytes.
[[nodiscard]] std::string SvgText(const Sheet& sheet);

}  // namespace zrsheet
