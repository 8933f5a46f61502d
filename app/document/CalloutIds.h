// What scripts, pictures and reports call a callout.

#pragma once

#include <string>
#include <vector>

#include "du/SmartPtr.h"
#include "zrannotations/Callout.h"

namespace zrsheet {

/// Legal XML names, the same from run to run: "callout-3" for the first callout of item 3, "callout-3-2" for
/// its second, "callout-text-1" for one without item. One for each callout, in their order.
[[nodiscard]] std::vector<std::string> CalloutIds(
    const std::vector<du::SmartPtr<zrannotations::Callout>>& callouts);

}  // namespace zrsheet
