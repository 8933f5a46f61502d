// What is wrong with a layout, and how long its leaders are.

#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "callouts/ZrcalloutsExport.h"
#include "callouts/align/optimal/LayoutProblem.h"

namespace zrcallouts {

enum class LayoutFaultKind : std::uint8_t {
    LabelsOverlap,
    LeadersCross,      // of two labels
    LeaderMeetsLabel,  // `label`'s leader runs into `other`
    LabelOffPage,
    LabelOnModel,  // or on an obstacle
};

struct LayoutFault {
    LayoutFaultKind kind = LayoutFaultKind::LabelsOverlap;
    std::uint32_t label = 0;
    std::uint32_t other = 0;  // the same where only one takes part

    friend bool operator==(const LayoutFault&, const LayoutFault&) = default;
};

/// Lengths are pixels.
struct ZRCALLOUTS_API LayoutQuality {
    std::vector<LayoutFault> faults;  // by kind, then label, then other
    double length = 0.0;              // of all leaders, from where they start in their labels
    double shortest = 0.0;            // the same if every label was alone on the page
    double displacement = 0.0;        // mean way of labels from where they would be alone
    bool isComplete = true;           // no further labels or leaders are in each other's way

    [[nodiscard]] std::size_t Count(LayoutFaultKind kind) const;
    /// Of the length to the shortest; 1 where there are no leaders.
    [[nodiscard]] double Ratio() const { return shortest > 0.0 ? length / shortest : 1.0; }
};

/// `centres` has one for each label. O(n log n) where labels and leaders lie apart. Once a hundred thousand
/// faults are found, no more pairs are looked at: a sheet so crowded is not repaired pair by pair.
[[nodiscard]] ZRCALLOUTS_API LayoutQuality MeasureLayout(const LayoutProblem& problem,
                                                         const std::vector<ScreenPoint>& centres);

}  // namespace zrcallouts
