// The illustrated parts data for publishing systems.

#pragma once

#include <string>

#include "app/sheet/Sheet.h"

namespace zrsheet {

/// XML in the manner of S1000D parts data (see docs/PARTS_DATA.md): the figure with a hotspot for each part
/// that is seen, whose applicationStructureIdent is the id of its area in the SVG, and a catalogue sequence
/// number for each item. `graphic` is the name of the SVG file. Equal sheets give equal bytes.
[[nodiscard]] std::string XmlText(const Sheet& sheet, const std::string& graphic);

}  // namespace zrsheet
