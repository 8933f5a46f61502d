#include "app/sheet/SheetQuality.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <set>
#include <utility>

namespace zrsheet {
namespace {

using zrcallouts::LayoutProblem;
using zrcallouts::ModelArea;
using zrcallouts::ScreenBox;
using zrcallouts::ScreenPoint;

ScreenBox BoxOf(const PageBox& box) { return {box.x0, box.y0, box.x1, box.y1}; }

ModelArea AreaOf(const SheetHotspot& hotspot, const PageBox& figure) {
    ModelArea area{{1e300, 1e300, -1e300, -1e300}, {}};
    for (const auto& ring : hotspot.rings) {
        std::vector<ScreenPoint>& points = area.rings.emplace_back();
        points.reserve(ring.size());
        for (const ArtPoint& point : ring) {
            const ScreenPoint place{figure.x0 + static_cast<double>(point.x),
                                    figure.y0 + static_cast<double>(point.y)};
            area.box = {std::min(area.box.x0, place.x), std::min(area.box.y0, place.y),
                        std::max(area.box.x1, place.x), std::max(area.box.y1, place.y)};
            points.push_back(place);
        }
    }
    return area;
}

zrcallouts::LayoutLabel LabelOf(const SheetCallout& callout) {
    zrcallouts::LayoutLabel label;
    label.form = {callout.box.x1 - callout.box.x0, callout.box.y1 - callout.box.y0, callout.look.shape};
    if (!callout.stack.empty()) label.form.stacked = static_cast<unsigned>(callout.stack.size());
    label.centre = {0.5 * (callout.box.x0 + callout.box.x1), 0.5 * (callout.box.y0 + callout.box.y1)};
    for (const SheetLeader& leader : callout.leaders)
        label.anchors.push_back({leader.anchor.x, leader.anchor.y});
    return label;
}

/// In the order of the kinds.
constexpr std::array<std::string_view, 5> kWords{"labels-overlap", "leaders-cross", "leader-meets-label",
                                                 "label-off-page", "label-on-model"};
constexpr std::array<std::string_view, 5> kTroubles{"labels lie over each other", "leaders cross",
                                                    "leaders run into other labels", "labels leave the page",
                                                    "labels lie on the model or on what is around it"};
constexpr std::size_t kMostNamed = 12;

/// What a reader calls the callout.
std::string NameOf(const SheetCallout& callout) {
    std::string name = callout.label.empty() ? callout.id : callout.label;
    std::replace(name.begin(), name.end(), '\n', ' ');
    return name;
}

std::string Named(const Sheet& sheet, zrcallouts::LayoutFaultKind kind) {
    std::set<std::uint32_t> callouts;
    for (const auto& fault : sheet.quality.faults) {
        if (fault.kind == kind) callouts.insert({fault.label, fault.other});
    }
    std::string names;
    std::size_t named = 0;
    for (const std::uint32_t callout : callouts) {
        if (++named > kMostNamed)
            return fmt::format("{} and {}{} more", names, sheet.quality.isComplete ? "" : "at least ",
                               callouts.size() - kMostNamed);
        names.append(names.empty() ? "" : ", ").append(NameOf(sheet.callouts[callout]));
    }
    return names;
}

}  // namespace

std::string_view WordFor(zrcallouts::LayoutFaultKind kind) { return kWords[static_cast<std::size_t>(kind)]; }

std::vector<std::string> FaultNotices(const Sheet& sheet) {
    std::vector<std::string> notices;
    for (const auto kind : kFaultKinds) {
        if (sheet.quality.Count(kind) == 0) continue;
        notices.push_back(
            fmt::format("{} (callouts {}); a larger page, fewer callouts or another layout gives them room",
                        kTroubles[static_cast<std::size_t>(kind)], Named(sheet, kind)));
    }
    return notices;
}

zrcallouts::LayoutQuality QualityOf(const Sheet& sheet, const zrcallouts::LayoutRules& rules) {
    LayoutProblem problem;
    problem.page = {0.0, 0.0, sheet.width, sheet.height};
    problem.model = BoxOf(sheet.model.box);
    problem.rules = rules;
    for (const SheetHotspot& hotspot : sheet.hotspots) problem.areas.push_back(AreaOf(hotspot, sheet.figure));
    for (const SheetInset& inset : sheet.insets) problem.obstacles.push_back(BoxOf(inset.box));
    for (const SheetTable& table : sheet.tables) problem.obstacles.push_back(BoxOf(table.box));
    std::vector<ScreenPoint> centres;
    for (const SheetCallout& callout : sheet.callouts) {
        problem.labels.push_back(LabelOf(callout));
        centres.push_back(problem.labels.back().centre);
    }
    return MeasureLayout(problem, centres);
}

}  // namespace zrsheet
