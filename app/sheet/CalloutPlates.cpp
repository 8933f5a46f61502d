#include "app/sheet/CalloutPlates.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "app/document/CalloutIds.h"
#include "app/render/TextMetrics.h"
#include "zrk/scene/ShapeView.h"

namespace zrsheet {
namespace {

using zrannotations::Callout;

constexpr double kBalloonHeight = 2.0;  // font sizes
constexpr double kLabelPadding = 0.7;   // font sizes, both ends of a capsule together

PagePoint OnPage(const dg::DPoint3D& pixel, const PageBox& figure) {
    return {figure.x0 + pixel.x, figure.y0 + pixel.y};
}

/// Where the leader ends; false when that lies outside the glass that it leads through.
bool AnchorPixel(const Callout& callout, unsigned position, const dg::Camera3D& camera, dg::DPoint3D& pixel) {
    dg::DPoint3D point;
    dg::Location location;
    callout.GetAnchorAtPos(position, point);
    callout.GetInstanceLocationAtPos(location, position);
    const dg::DPoint3D world = point * location;
    if (const auto inset = callout.GetInsetAtPos(position)) return inset->GetObjectPtToScreenPt(world, pixel);
    pixel = world * camera.GetWorldToPixel();
    return true;
}

/// The ink with most of the ground mixed in, "#rrggbb".
std::string Dimmed(const std::string& ink, const dg::Color& ground) {
    constexpr double kGroundShare = 0.6;
    const auto value = static_cast<unsigned>(std::stoul(ink.substr(1), nullptr, 16));
    const auto mix = [&](unsigned shift, float channel) {
        const double own = (value >> shift) & 0xFFU;
        const double other = 255.0 * std::clamp(static_cast<double>(channel), 0.0, 1.0);
        return static_cast<unsigned>(std::lround(own + kGroundShare * (other - own)));
    };
    return fmt::format("#{:02x}{:02x}{:02x}", mix(16, ground.r), mix(8, ground.g), mix(0, ground.b));
}

std::vector<SheetLeader> LeadersOf(const Callout& callout, const dg::Camera3D& camera, const PageBox& figure,
                                   const std::string& ink) {
    std::vector<SheetLeader> leaders;
    for (const unsigned position : callout.GetDrawnLeaders()) {
        dg::DPoint3D pixel;
        if (!AnchorPixel(callout, position, camera, pixel)) continue;
        SheetLeader leader;
        leader.anchor = OnPage(pixel, figure);
        leader.instance = callout.GetShapeInstanceIdAtPos(position);
        leader.visible = !callout.IsHiddenAsDashedAtPos(position);
        leader.color = callout.IsDimAtPos(position) ? Dimmed(ink, callout.GetDimColorAtPos(position)) : ink;
        leaders.push_back(leader);
    }
    return leaders;
}

/// Where the line from the balloon to the anchor leaves the balloon, whose ends are half circles.
PagePoint RimTowards(const PageBox& box, const PagePoint& anchor) {
    const double radius = 0.5 * (box.y1 - box.y0);
    const PagePoint core{std::clamp(anchor.x, box.x0 + radius, std::max(box.x1 - radius, box.x0 + radius)),
                         0.5 * (box.y0 + box.y1)};
    const double distance = std::hypot(anchor.x - core.x, anchor.y - core.y);
    if (distance <= radius) return anchor;
    return {core.x + (anchor.x - core.x) * radius / distance,
            core.y + (anchor.y - core.y) * radius / distance};
}

}  // namespace

CalloutPlates::CalloutPlates(const std::vector<du::SmartPtr<Callout>>& callouts, const PageBox& figure,
                             const SheetStyle& style)
    : m_figure(figure), m_height(std::round(kBalloonHeight * style.fontSize)) {
    const auto ids = CalloutIds(callouts);
    for (std::size_t i = 0; i < callouts.size(); ++i) {
        const auto& callout = callouts[i];
        du::SmartPtr<zrk::ShapeView> view;
        const dg::DPoint3D label = callout->GetLabelRelativeScreenPosition(view);
        if (!view) continue;
        dg::Camera3D camera;
        view->GetCamera(camera);
        SheetCallout plate;
        plate.hasItem = callout->GetItemId(plate.itemId);
        plate.id = ids[i];
        plate.label = callout->GetMarkupText().Text();
        plate.leaders = LeadersOf(*callout, camera, figure, style.inkColor);
        for (unsigned leader = 0; leader < callout->GetLeaderLineCount(false); ++leader) {
            plate.instances.push_back(callout->GetShapeInstanceIdAtPos(leader));
        }
        const double width = TextWidth(plate.label, style.fontSize) + kLabelPadding * style.fontSize;
        Balloon balloon{OnPage(label, figure), OnPage(label, figure), std::max(m_height, std::round(width)),
                        m_height};
        if (!plate.leaders.empty()) balloon.anchor = plate.leaders.front().anchor;
        m_sources.push_back(callout);
        m_balloons.push_back(balloon);
        m_callouts.push_back(std::move(plate));
    }
    Move({});
}

void CalloutPlates::Place(SheetCallout& callout, const PagePoint& centre) const {
    const Balloon& balloon = m_balloons[static_cast<std::size_t>(&callout - m_callouts.data())];
    callout.box = {centre.x - 0.5 * balloon.width, centre.y - 0.5 * balloon.height,
                   centre.x + 0.5 * balloon.width, centre.y + 0.5 * balloon.height};
    for (SheetLeader& leader : callout.leaders) leader.end = RimTowards(callout.box, leader.anchor);
}

void CalloutPlates::Tidy(const PageBox& model) {
    TidyBalloons(m_balloons, model, m_figure);
    Move({});
}

void CalloutPlates::Move(const PagePoint& move) {
    for (std::size_t i = 0; i < m_callouts.size(); ++i) {
        m_balloons[i].centre.x += move.x;
        m_balloons[i].centre.y += move.y;
        for (SheetLeader& leader : m_callouts[i].leaders) {
            leader.anchor.x += move.x;
            leader.anchor.y += move.y;
        }
        Place(m_callouts[i], m_balloons[i].centre);
    }
}

void CalloutPlates::StoreLabels() const {
    for (std::size_t i = 0; i < m_sources.size(); ++i) {
        du::SmartPtr<zrk::ShapeView> view;
        dg::DPoint3D pixel = m_sources[i]->GetLabelRelativeScreenPosition(view);
        dg::Camera3D camera;
        view->GetCamera(camera);
        pixel.x = m_balloons[i].centre.x - m_figure.x0;
        pixel.y = m_balloons[i].centre.y - m_figure.y0;
        m_sources[i]->SetMarkupLabelPosition(pixel * camera.GetPixelToWorld());
    }
}

std::vector<PageBox> CalloutPlates::Boxes() const {
    std::vector<PageBox> boxes;
    for (const SheetCallout& callout : m_callouts) boxes.push_back(callout.box);
    return boxes;
}

std::vector<SheetCallout> CalloutPlates::Take() { return std::move(m_callouts); }

}  // namespace zrsheet
