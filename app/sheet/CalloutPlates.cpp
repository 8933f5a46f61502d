#include "app/sheet/CalloutPlates.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "app/document/CalloutIds.h"
#include "app/render/ParallelFor.h"
#include "app/sheet/BalloonForm.h"
#include "app/sheet/CalloutLabel.h"
#include "zrk/scene/ShapeView.h"

namespace zrsheet {
namespace {

using zrannotations::Callout;
using zrannotations::Terminator;

PagePoint OnPage(const dg::DPoint3D& pixel, const PageBox& figure) {
    return {figure.x0 + pixel.x, figure.y0 + pixel.y};
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

}  // namespace

CalloutPlates::CalloutPlates(const std::vector<du::SmartPtr<Callout>>& callouts,
                             const zrannotations::CalloutStyle& ofDocument, const PageBox& figure,
                             const SheetStyle& style)
    : m_figure(figure), m_style(ofDocument) {
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
        CalloutLabel said = LabelOf(*callout, ofDocument, style);
        plate.label = std::move(said.text);
        plate.look = said.look;
        plate.stack = std::move(said.stack);
        AddLeaders(plate, *callout, camera, style.inkColor);
        for (unsigned leader = 0; leader < callout->GetLeaderLineCount(false); ++leader) {
            plate.instances.push_back(callout->GetShapeInstanceIdAtPos(leader));
        }
        m_centres.push_back(OnPage(label, figure));
        m_forms.push_back(said.form);
        m_sources.push_back(callout);
        m_callouts.push_back(std::move(plate));
    }
    Move({});
}

void CalloutPlates::AddLeaders(SheetCallout& plate, const Callout& callout, const dg::Camera3D& camera,
                               const std::string& ink) {
    auto& sources = m_leaders.emplace_back();
    for (const unsigned position : callout.GetDrawnLeaders()) {
        dg::DPoint3D world;
        dg::DPoint3D pixel;
        if (!callout.GetLeaderEndOnScreen(position, camera, world, pixel)) continue;
        SheetLeader leader;
        leader.place = {world.x, world.y, world.z};
        leader.anchor = OnPage(pixel, m_figure);
        leader.instance = callout.GetShapeInstanceIdAtPos(position);
        leader.visible = !callout.IsHiddenAsDashedAtPos(position);
        leader.color = callout.IsDimAtPos(position) ? Dimmed(ink, callout.GetDimColorAtPos(position)) : ink;
        plate.leaders.push_back(leader);
        sources.push_back({position, pixel});
    }
}

Terminator CalloutPlates::EndOf(const Callout& callout, const Source& leader,
                                const AnchorEdges& edges) const {
    const auto chosen = callout.GetStyle().terminator.value_or(m_style.terminator.value_or(Terminator::Auto));
    if (chosen != Terminator::Auto) return chosen;
    const auto part = callout.GetShapeInstanceAtPos(leader.position);
    if (!part || !edges.IsShown(*part)) return Terminator::None;
    dg::Camera3D camera;
    const auto inset = callout.GetInsetAtPos(leader.position);
    if (inset) {
        if (!inset->GetMagnifierCamera(camera)) return Terminator::Dot;
    } else {
        du::SmartPtr<zrk::ShapeView> view;
        static_cast<void>(callout.GetLabelRelativeScreenPosition(view));
        if (!view) return Terminator::Dot;
        view->GetCamera(camera);
    }
    return edges.IsOnEdge(*part, camera, leader.pixel) ? Terminator::Arrow : Terminator::Dot;
}

void CalloutPlates::EndLeaders(const zrk::PickScene& scene, unsigned threads) {
    const AnchorEdges edges(scene);
    ParallelFor(m_callouts.size(), threads, [&](std::size_t i) {
        for (std::size_t k = 0; k < m_leaders[i].size(); ++k)
            m_callouts[i].leaders[k].terminator = EndOf(*m_sources[i], m_leaders[i][k], edges);
    });
}

void CalloutPlates::Place(std::size_t i) {
    const PagePoint& centre = m_centres[i];
    const zrcallouts::ScreenBox box = m_forms[i].BoxAt({centre.x, centre.y});
    m_callouts[i].box = {box.x0, box.y0, box.x1, box.y1};
    for (SheetLeader& leader : m_callouts[i].leaders)
        leader.end = LeaderEnd(m_forms[i], m_callouts[i].box, leader.anchor);
}

void CalloutPlates::Move(const PagePoint& move) {
    for (std::size_t i = 0; i < m_callouts.size(); ++i) {
        m_centres[i].x += move.x;
        m_centres[i].y += move.y;
        for (SheetLeader& leader : m_callouts[i].leaders) {
            leader.anchor.x += move.x;
            leader.anchor.y += move.y;
        }
        Place(i);
    }
}

std::vector<PageBox> CalloutPlates::Boxes() const {
    std::vector<PageBox> boxes;
    for (std::size_t i = 0; i < m_callouts.size(); ++i) {
        if (!m_sources[i]->LeadsNowhere()) boxes.push_back(m_callouts[i].box);
    }
    return boxes;
}

std::vector<SheetCallout> CalloutPlates::Take() {
    std::vector<SheetCallout> shown;
    for (std::size_t i = 0; i < m_callouts.size(); ++i) {
        if (!m_sources[i]->LeadsNowhere()) shown.push_back(std::move(m_callouts[i]));
    }
    return shown;
}

}  // namespace zrsheet
