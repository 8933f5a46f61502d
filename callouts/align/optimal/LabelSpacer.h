// Puts labels on one line, each near where it wants to be and none over its neighbour.

#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "callouts/ZrcalloutsExport.h"

namespace zrcallouts {

/// A label on its line, in pixels along it.
struct SpacedLabel {
    double wish = 0.0;  // of its middle
    double weight = 1.0;
    double length = 0.0;
};

/// Keeps its memory from call to call. One thread at a time.
class ZRCALLOUTS_API LabelSpacer {
public:
    /// The middles in the order of the labels, which stays: at least the halves of both lengths and `gap`
    /// apart, all within `least` and `greatest`, and of all such places those with the least sum of weighted
    /// squares of the ways to the wishes. Labels that do not fit stand as near as they may, and as far
    /// beyond one end as beyond the other. Valid until the next call. Requires: weights above 0. O(n).
    std::span<const double> Space(std::span<const SpacedLabel> labels, double gap, double least,
                                  double greatest);

private:
    /// Neighbours that share one place until the next lies far enough.
    struct Run {
        double weight = 0.0;
        double sum = 0.0;  // of the weighted wishes, less what lies before each label
        std::size_t end = 0;

        double Place() const { return sum / weight; }
    };

    std::vector<double> m_places;  // while at work: what lies before each label when all touch
    std::vector<Run> m_runs;
};

}  // namespace zrcallouts
