// What is wrong with the labels on a sheet, and how long their leaders are.

#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "app/sheet/Sheet.h"
#include "callouts/align/optimal/LayoutQuality.h"

namespace zrsheet {

inline constexpr std::array<zrcallouts::LayoutFaultKind, 5> kFaultKinds{
    zrcallouts::LayoutFaultKind::LabelsOverlap, zrcallouts::LayoutFaultKind::LeadersCross,
    zrcallouts::LayoutFaultKind::LeaderMeetsLabel, zrcallouts::LayoutFaultKind::LabelOffPage,
    zrcallouts::LayoutFaultKind::LabelOnModel};

/// Places the sheet's labels, leaders and glasses on the page and the visible areas of its parts against each
/// other. `rules` tell where labels would be alone. Faults count the sheet's callouts. O(n log n + outlines
/// near labels).
[[nodiscard]] zrcallouts::LayoutQuality QualityOf(const Sheet& sheet, const zrcallouts::LayoutRules& rules);

/// The kinds of faults for programs: "labels-overlap".
[[nodiscard]] std::string_view WordFor(zrcallouts::LayoutFaultKind kind);
/// A line for each kind of fault that the sheet has: which callouts, and what to do.
[[nodiscard]] std::vector<std::string> FaultNotices(const Sheet& sheet);

}  // namespace zrsheet
