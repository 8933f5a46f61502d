#include "callouts/align/optimal/LayoutProblem.h"

#include <algorithm>

namespace zrcallouts {

double GreatestLength(const std::vector<LayoutLabel>& labels, int axis) {
    double greatest = 0.0;
    for (const LayoutLabel& label : labels) {
        if (!label.isPinned) greatest = std::max(greatest, label.form.Length(axis));
    }
    return greatest;
}

double LeastLength(const std::vector<LayoutLabel>& labels, int axis) {
    double least = GreatestLength(labels, axis);
    for (const LayoutLabel& label : labels) {
        if (!label.isPinned) least = std::min(least, label.form.Length(axis));
    }
    return least;
}

}  // namespace zrcallouts
