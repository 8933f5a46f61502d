// What a layout is to solve: labels to place around a picture of the model.

#pragma once

#include <cstdint>
#include <vector>

#include "callouts/align/optimal/LabelForm.h"
#include "callouts/align/optimal/ScreenGeometry.h"

namespace zrcallouts {

/// Along what labels are placed.
enum class LayoutPattern : std::uint32_t {
    Sides,       // the four sides of the model's box, each label opposite what it points at
    Rectangle,   // the same, at equal distances along each side
    Columns,     // left and right only
    Rows,        // above and below only
    Circle,      // around the model's box; an oval where the page ends
    Silhouette,  // as near to the model as its outline lets them
};

/// Lengths are pixels.
struct LayoutRules {
    LayoutPattern pattern = LayoutPattern::Sides;
    double distance = 17.0;  // of labels from the model
    double gap = 8.0;        // between labels
    unsigned rows = 2;       // of labels on each side at the most, 1 or 2

    friend bool operator==(const LayoutRules&, const LayoutRules&) = default;
};

/// What a part covers: the points inside an odd number of its rings.
struct ModelArea {
    ScreenBox box;
    std::vector<std::vector<ScreenPoint>> rings;
};

struct LayoutLabel {
    LabelForm form;
    std::vector<ScreenPoint> anchors;  // that its leaders end at; none: it stays near its centre
    ScreenPoint centre;                // where it is now
    bool isPinned = false;             // and stays; the others keep off
};

struct LayoutProblem {
    ScreenBox page;                      // that labels are not to leave
    ScreenBox model;                     // that they are not to cover
    std::vector<ModelArea> areas{};      // of the model's parts; none: the whole box
    std::vector<ScreenBox> obstacles{};  // that they are not to cover either
    LayoutRules rules{};
    std::vector<LayoutLabel> labels;
};

/// Of the largest label that is not pinned; 0 without any.
[[nodiscard]] ZRCALLOUTS_API double GreatestLength(const std::vector<LayoutLabel>& labels, int axis);
/// Of the smallest one.
[[nodiscard]] double LeastLength(const std::vector<LayoutLabel>& labels, int axis);

}  // namespace zrcallouts
