#include "callouts/align/optimal/Clearing.h"

#include <algorithm>
#include <limits>

namespace zrcallouts {
namespace {

constexpr double kStep = 6.0;        // pixels
constexpr double kMostSteps = 200;   // across the page; on huge ones steps are longer
constexpr double kClearance = 1.0;   // pixels between a leader and a foreign label
constexpr std::size_t kBeside = 64;  // neighbours to either side; a leader has left its lane long before
constexpr double kNever = std::numeric_limits<double>::infinity();

double StepOf(double length) { return std::max(kStep, length / kMostSteps); }

}  // namespace

bool Clearing::Run() {
    bool isChanged = false;
    for (std::size_t lane = 0; lane < m_seating.LaneCount(); ++lane) isChanged = PushOut(lane) || isChanged;
    for (std::size_t lane = 0; lane < m_seating.LaneCount(); ++lane) {
        for (std::size_t other = 0; other < m_seating.LaneCount(); ++other) {
            if (m_seating.LaneAt(lane).Along() != m_seating.LaneAt(other).Along())
                isChanged = ClearCorner(lane, other) || isChanged;
        }
    }
    return isChanged;
}

bool Clearing::IsTouched(std::uint32_t label, std::uint32_t by) const {
    const auto& labels = m_seating.Problem().labels;
    const auto anchors = m_seating.AnchorsOf(by);
    return std::any_of(anchors.begin(), anchors.end(), [&](const ScreenPoint& anchor) {
        const ScreenPoint& centre = m_seating.CentreOf(by);
        const ScreenSegment leader{labels[by].form.Start(centre, anchor), anchor};
        return labels[label].form.IsTouched(m_seating.CentreOf(label), leader, kClearance);
    });
}

bool Clearing::HasTouches(std::size_t lane) const {
    for (std::size_t i = 0; i < m_seating.RowOf(lane).size(); ++i) {
        if (TouchesNeighbour(lane, i)) return true;
    }
    return false;
}

/// Looks as far to both sides as the leaders reach.
bool Clearing::TouchesNeighbour(std::size_t lane, std::size_t index) const {
    const auto& labels = m_seating.RowOf(lane);
    const int axis = m_seating.LaneAt(lane).Along();
    const std::uint32_t by = labels[index];
    double least = m_seating.CentreOf(by)[axis];
    double greatest = least;
    for (const ScreenPoint& anchor : m_seating.AnchorsOf(by)) {
        least = std::min(least, anchor[axis]);
        greatest = std::max(greatest, anchor[axis]);
    }
    const auto isWithin = [&](std::uint32_t label) {
        const double place = m_seating.CentreOf(label)[axis];
        const double half = 0.5 * m_seating.Problem().labels[label].form.Length(axis) + kClearance;
        return place + half >= least && place - half <= greatest;
    };
    const std::size_t first = index - std::min(index, kBeside);
    const std::size_t end = std::min(index + kBeside + 1, labels.size());
    for (std::size_t k = index; k-- > first && isWithin(labels[k]);) {
        if (IsTouched(labels[k], by)) return true;
    }
    for (std::size_t k = index + 1; k < end && isWithin(labels[k]); ++k) {
        if (IsTouched(labels[k], by)) return true;
    }
    return false;
}

bool Clearing::PushOut(std::size_t lane) {
    bool isChanged = false;
    const double step = StepOf(m_seating.Spare(lane));
    while (m_seating.Spare(lane) >= step && HasTouches(lane)) {
        m_seating.Push(lane, step);
        m_seating.Settle(lane);
        isChanged = true;
    }
    return isChanged;
}

/// The first leader from one lane that runs into a label of the other. Hardly any comes near them.
std::optional<Clearing::Touch> Clearing::FindTouch(std::size_t lane, std::size_t other) const {
    const auto& labels = m_seating.Problem().labels;
    ScreenBox band{kNever, kNever, -kNever, -kNever};
    for (const std::uint32_t label : m_seating.RowOf(other))
        Enclose(band, labels[label].form.BoxAt(m_seating.CentreOf(label)));
    for (const std::uint32_t leader : m_seating.RowOf(lane)) {
        ScreenBox reach = labels[leader].form.BoxAt(m_seating.CentreOf(leader));
        for (const ScreenPoint& anchor : m_seating.AnchorsOf(leader))
            Enclose(reach, {anchor.x, anchor.y, anchor.x, anchor.y});
        if (!reach.Overlaps(band, kClearance)) continue;
        for (const std::uint32_t label : m_seating.RowOf(other)) {
            if (IsTouched(label, leader)) return Touch{leader, label};
        }
    }
    return std::nullopt;
}

Clearing::End Clearing::EndNear(std::uint32_t label) const {
    const std::size_t lane = m_seating.LaneOf(label);
    return {lane, 2 * m_seating.IndexOf(label) < m_seating.RowOf(lane).size()};
}

double Clearing::EndStep(std::size_t lane) const { return StepOf(0.5 * m_seating.Capacity(lane)); }

/// What it costs to take a step off the lane's end.
double Clearing::LossBy(const End& end) {
    const double step = EndStep(end.lane);
    if (m_seating.Load(end.lane) + step > m_seating.Capacity(end.lane)) return kNever;
    Seating::Window window = m_seating.Whole(end.lane);
    const double before = m_seating.CostOf(window);
    (end.isLeast ? window.least : window.greatest) += end.isLeast ? step : -step;
    return m_seating.CostWith(window, m_seating.RowOf(end.lane)) - before;
}

bool Clearing::ClearCorner(std::size_t lane, std::size_t other) {
    bool isChanged = false;
    for (auto touch = FindTouch(lane, other); touch; touch = FindTouch(lane, other)) {
        const End own = EndNear(touch->leader);
        const End others = EndNear(touch->label);
        const double ownLoss = LossBy(own);
        const double othersLoss = LossBy(others);
        if (std::min(ownLoss, othersLoss) == kNever) break;
        const End& end = ownLoss < othersLoss ? own : others;
        m_seating.Shorten(end.lane, end.isLeast, EndStep(end.lane));
        m_seating.Settle(end.lane);
        isChanged = true;
    }
    return isChanged;
}

}  // namespace zrcallouts
