// The shapes that 3-D symbols may have.

#pragma once

#include <span>
#include <string>
#include <string_view>

#include "du/SmartPtr.h"
#include "zrk/tree/ComponentNode.h"

namespace zrsheet {

/// "arrow" (its tip is the place that it marks, from above), "cross" and "diamond" (around their place).
[[nodiscard]] std::span<const std::string_view> SymbolShapeNames();

/// The component of that name, whose shape is one unit high; always the same one for a name. Throws UserError
/// for a name that is not known. Any thread.
[[nodiscard]] du::SmartPtr<zrk::ComponentNode> SymbolComponent(const std::string& name);

}  // namespace zrsheet
