// How the author wants labels arranged.

#pragma once

#include <array>
#include <string_view>

#include "callouts/align/optimal/LayoutProblem.h"

namespace zrsheet {

enum class LayoutMode {
    Optimal,  // without faults, as short as can be (callouts/align/OptimalLayout.h)
    Simple,   // each label to its nearest side, pushed apart there (callouts/align/Layout.h)
};

/// In the order of the enumerations.
inline constexpr std::array<std::string_view, 2> kLayoutWords{"optimal", "simple"};
inline constexpr std::array<std::string_view, 6> kPatternWords{"sides", "rectangle", "columns",
                                                               "rows",  "circle",    "silhouette"};

struct LayoutChoice {
    LayoutMode mode = LayoutMode::Optimal;
    zrcallouts::LayoutRules rules;  // of the optimal one

    friend bool operator==(const LayoutChoice&, const LayoutChoice&) = default;
};

// What the rules' lengths, in pixels, and rows may be.
inline constexpr double kMostDistance = 1000.0;
inline constexpr double kMostGap = 200.0;
inline constexpr unsigned kMostRows = 2;

/// All throw UserError for what is none.
[[nodiscard]] LayoutMode ParseLayoutMode(std::string_view word);
[[nodiscard]] zrcallouts::LayoutPattern ParseLayoutPattern(std::string_view word);
[[nodiscard]] double CheckedDistance(double pixels);
[[nodiscard]] double CheckedGap(double pixels);
[[nodiscard]] unsigned CheckedRows(double rows);

}  // namespace zrsheet
