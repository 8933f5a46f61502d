// The ids of a drawing's elements: what other files refer to, so that all exporters must give the same.

#pragma once

#include <string>
#include <vector>

#include "app/sheet/Sheet.h"

namespace zrsheet {

/// Of letters, digits, '-', '_' and '.', no two alike; one for each of the sheet's, in the sheet's order.
struct SheetIds {
    struct Inset {
        std::string group;
        std::string clip;
        std::vector<std::string> hotspots;
    };
    std::vector<std::string> hotspots;  // of the sheet itself
    std::vector<Inset> insets;
    std::vector<std::string> callouts;

    /// Of what the picture lies on.
    static constexpr const char* kGround = "ground";
};

[[nodiscard]] SheetIds IdsOf(const Sheet& sheet);

}  // namespace zrsheet
