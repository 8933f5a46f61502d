#include "callouts/align/optimal/LabelForm.h"

#include <algorithm>
#include <cmath>

namespace zrcallouts {
namespace {

using zrannotations::BalloonShape;

constexpr double kSlantClearance = 2.0;  // pixels between a leader and a round label that it passes

bool IsRound(BalloonShape shape) { return shape == BalloonShape::Round || shape == BalloonShape::Split; }

/// From an end of the underline where that keeps the leader off the text, else from above or below.
ScreenPoint BareStart(const ScreenBox& box, const ScreenPoint& anchor) {
    const bool isAbove = anchor.y < box.y0 && anchor.x > box.x0 && anchor.x < box.x1;
    return {std::clamp(anchor.x, box.x0, box.x1), isAbove ? box.y0 : box.y1};
}

ScreenBox Widened(const ScreenBox& box, double by) {
    return {box.x0 - by, box.y0 - by, box.x1 + by, box.y1 + by};
}

}  // namespace

ScreenBox LabelForm::BoxAt(const ScreenPoint& centre) const {
    return {centre.x - 0.5 * width, centre.y - 0.5 * height, centre.x + 0.5 * width, centre.y + 0.5 * height};
}

/// Of bare text and stacks.
ScreenPoint LabelForm::FarStart(const ScreenPoint& centre, const ScreenPoint& anchor) const {
    const ScreenBox box = BoxAt(centre);
    if (shape == BalloonShape::None) return BareStart(box, anchor);
    const double each = height / stacked;
    const double radius = std::min(0.5 * each, 0.5 * width);
    const double row = std::clamp(std::floor((anchor.y - box.y0) / each), 0.0, stacked - 1.0);
    return {std::clamp(anchor.x, box.x0 + radius, box.x1 - radius), box.y0 + (row + 0.5) * each};
}

bool LabelForm::IsTouched(const ScreenPoint& centre, const ScreenSegment& leader, double clearance) const {
    const ScreenBox box = Widened(BoxAt(centre), clearance);
    if (!IsInside(leader, box)) return false;
    if (!IsRound(shape) || stacked > 1) return true;
    const double radius = std::min(0.5 * height, 0.5 * width);
    const double reach = 0.5 * width - radius;
    const ScreenSegment stem{{centre.x - reach, centre.y}, {centre.x + reach, centre.y}};
    return Distance(leader, stem) < radius + clearance;
}

double LabelForm::Slant(double gap) const {
    const double radius = 0.5 * std::min(width, height / stacked);
    if (!IsRound(shape)) return (radius + gap) / radius;
    const double pitch = 2.0 * radius + gap;
    const double off = std::min(radius + kSlantClearance, 0.99 * pitch);
    return std::sqrt(pitch * pitch - off * off) / off;
}

}  // namespace zrcallouts
