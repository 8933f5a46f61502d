#include "callouts/align/optimal/LeaderSwaps.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace zrcallouts {
namespace {

constexpr int kMostRounds = 60;     // of exchanging and placing; in practice a handful
constexpr int kMostSorts = 12;      // of one lane at a time
constexpr double kOrderCost = 3.0;  // pixels of leader that neighbours save at least by changing their order
constexpr double kNeighbourGain = 1e-3;  // of both leaders, beyond that
constexpr double kLeastGain = 1e-6;
constexpr double kUncrossLoss = 0.05;  // of both leaders, which not crossing may cost

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr ScreenBox kNothing{kInfinity, kInfinity, -kInfinity, -kInfinity};

}  // namespace

LeaderSwaps::LeaderSwaps(Seating& seating) : m_seating(seating), m_lanes(seating.LaneCount()) {}

bool LeaderSwaps::Sort() {
    bool isChanged = false;
    for (std::size_t lane = 0; lane < m_lanes.size(); ++lane) isChanged = SortNeighbours(lane) || isChanged;
    m_sorted = m_seating.Now();
    return isChanged;
}

bool LeaderSwaps::Run() {
    bool isAnyChanged = false;
    for (int round = 0; round < kMostRounds; ++round) {
        const bool isSorted = Sort();
        const bool isChanged = Uncross() || isSorted;
        isAnyChanged = isAnyChanged || isChanged;
        if (!isChanged || m_pairsLeft == 0) break;
    }
    return isAnyChanged;
}

/// Exchanges neighbours as long as that saves enough.
bool LeaderSwaps::SortNeighbours(std::size_t lane) {
    if (m_seating.LastMoveOn(lane) <= m_sorted) return false;
    const auto& labels = m_seating.RowOf(lane);
    bool isAnyChanged = false;
    std::uint64_t sorted = m_sorted;
    const auto isFresh = [&](std::uint32_t label) { return m_seating.LastMoveOf(label) > sorted; };
    for (int round = 0; round < kMostSorts; ++round) {
        bool isChanged = false;
        for (std::size_t i = 1; i < labels.size(); ++i) {
            if (!isFresh(labels[i - 1]) && !isFresh(labels[i])) continue;
            for (std::size_t k = i; k > 0 && MayLook() && TrySwap(labels[k - 1], labels[k], true); --k)
                isChanged = true;
        }
        if (!isChanged) break;
        isAnyChanged = true;
        sorted = m_seating.Now();
        m_seating.SettleRoughly(lane);
    }
    if (isAnyChanged) m_seating.Settle(lane);
    return isAnyChanged;
}

/// Only pairs are looked at of which one has moved since the last time.
bool LeaderSwaps::Uncross() {
    for (std::size_t lane = 0; lane < m_lanes.size(); ++lane) Measure(lane);
    m_seen = m_seating.Now();
    bool isChanged = false;
    for (std::size_t a = 0; a < m_lanes.size(); ++a) {
        if (m_lanes[a].isFresh) isChanged = SwapWithin(a) || isChanged;
        for (std::size_t b = 0; b < a; ++b) {
            isChanged = SwapBetween(a, b) || isChanged;
            isChanged = SwapBetween(b, a) || isChanged;
        }
    }
    for (std::size_t lane = 0; lane < m_lanes.size(); ++lane) {
        if (m_lanes[lane].isChanged) m_seating.Settle(lane);
    }
    return isChanged;
}

/// Unless it has hardly moved.
void LeaderSwaps::Measure(std::size_t lane) {
    LaneSpans& all = m_lanes[lane];
    all.isChanged = false;
    all.isFresh = m_seating.LastMoveOn(lane) > m_seen;
    if (!all.isFresh) return;
    all.box = kNothing;
    all.spans.resize(m_seating.RowOf(lane).size());
    for (std::size_t i = 0; i < all.spans.size(); ++i) {
        MeasureOne(lane, i);
        Span& span = all.spans[i];
        span.isFresh = m_seating.LastMoveOf(m_seating.RowOf(lane)[i]) > m_seen;
    }
    if (!all.spans.empty()) FindReaches(lane, 0, all.spans.size() - 1);
}

/// After the spans from `first` to `last` have changed. What lies beyond them only changes up to where it
/// reaches as far as before.
void LeaderSwaps::FindReaches(std::size_t lane, std::size_t first, std::size_t last) {
    auto& spans = m_lanes[lane].spans;
    double reach = first > 0 ? spans[first - 1].reach : -kInfinity;
    for (std::size_t i = first; i < spans.size(); ++i) {
        reach = std::max(reach, spans[i].to);
        if (std::exchange(spans[i].reach, reach) == reach && i > last) break;
    }
    double back = last + 1 < spans.size() ? spans[last + 1].back : kInfinity;
    for (std::size_t i = last + 1; i-- > 0;) {
        back = std::min(back, spans[i].from);
        if (std::exchange(spans[i].back, back) == back && i < first) break;
    }
}

void LeaderSwaps::MeasureOne(std::size_t lane, std::size_t index) {
    auto& spans = m_lanes[lane].spans;
    const std::uint32_t label = m_seating.RowOf(lane)[index];
    const int axis = m_seating.LaneAt(lane).Along();
    const ScreenPoint& centre = m_seating.CentreOf(label);
    Span& span = spans[index];
    span.box = {centre.x, centre.y, centre.x, centre.y};
    const auto anchors = m_seating.AnchorsOf(label);
    for (const ScreenPoint& anchor : anchors) Enclose(span.box, {anchor.x, anchor.y, anchor.x, anchor.y});
    const ScreenPoint& last = anchors.back();
    span.leader = {m_seating.Problem().labels[label].form.Start(centre, last), last};
    span.isSingle = anchors.size() == 1;
    span.from = span.box.Least(axis);
    span.to = span.box.Greatest(axis);
    Enclose(m_lanes[lane].box, span.box);
}

/// Only leaders whose stretches of the lane overlap can cross: each looks back as far as any before it
/// reaches.
bool LeaderSwaps::SwapWithin(std::size_t lane) {
    bool isChanged = false;
    auto& spans = m_lanes[lane].spans;
    const auto& labels = m_seating.RowOf(lane);
    for (std::size_t i = 1; i < spans.size(); ++i) {
        for (std::size_t k = i; k-- > 0;) {
            if (spans[k].reach < spans[i].from || !MayLook()) break;
            if (!spans[i].isFresh && !spans[k].isFresh) continue;
            if (!spans[k].MayCross(spans[i]) || !TrySwap(labels[k], labels[i], false)) continue;
            isChanged = true;
            MeasureOne(lane, k);
            MeasureOne(lane, i);
            FindReaches(lane, k, i);
        }
    }
    return isChanged;
}

/// Looks at what has moved of `a` and at all of `b`.
bool LeaderSwaps::SwapBetween(std::size_t a, std::size_t b) {
    if (!m_lanes[a].isFresh || !m_lanes[a].box.Overlaps(m_lanes[b].box)) return false;
    bool isChanged = false;
    for (std::size_t i = 0; i < m_lanes[a].spans.size(); ++i) {
        const Span& span = m_lanes[a].spans[i];
        if (span.isFresh && span.box.Overlaps(m_lanes[b].box)) isChanged = SwapAcross(a, i, b) || isChanged;
    }
    return isChanged;
}

/// Of `b` only the stretch that the leaders of `a` reach over counts.
bool LeaderSwaps::SwapAcross(std::size_t a, std::size_t i, std::size_t b) {
    bool isChanged = false;
    const Span& span = m_lanes[a].spans[i];
    const auto& spans = m_lanes[b].spans;
    const int axis = m_seating.LaneAt(b).Along();
    const auto first = std::partition_point(
        spans.begin(), spans.end(), [&](const Span& other) { return other.reach < span.box.Least(axis); });
    for (auto k = static_cast<std::size_t>(first - spans.begin()); k < spans.size(); ++k) {
        if (spans[k].back > span.box.Greatest(axis) || !MayLook()) break;
        if (!span.MayCross(spans[k])) continue;
        if (!TrySwap(m_seating.RowOf(a)[i], m_seating.RowOf(b)[k], false)) continue;
        isChanged = true;
        MeasureOne(a, i);
        MeasureOne(b, k);
        FindReaches(b, k, k);
    }
    if (isChanged) FindReaches(a, i, i);
    return isChanged;
}

/// Exchanges labels whose leaders cross, and neighbours that save more than their old order is worth.
bool LeaderSwaps::TrySwap(std::uint32_t a, std::uint32_t b, bool areNeighbours) {
    if (!areNeighbours && !m_seating.DoLeadersCross(a, b)) return false;
    const double length = m_seating.LengthOf(a) + m_seating.LengthOf(b);
    const double gain = length - m_seating.LengthInSeatOf(a, b) - m_seating.LengthInSeatOf(b, a);
    // Neighbours that would lose by it mostly do not cross; where they do, uncrossing sees to them.
    if (areNeighbours && gain < -kOrderCost) return false;
    const bool doCross = !areNeighbours || (gain >= 0.0 && m_seating.DoLeadersCross(a, b));
    if (!IsWorthwhile(a, b, gain, doCross)) {
        m_isStuck = m_isStuck || doCross;
        return false;
    }
    m_seating.Swap(a, b);
    m_lanes[m_seating.LaneOf(a)].isChanged = m_lanes[m_seating.LaneOf(b)].isChanged = true;
    return true;
}

bool LeaderSwaps::IsWorthwhile(std::uint32_t a, std::uint32_t b, double gain, bool doCross) const {
    const double length = m_seating.LengthOf(a) + m_seating.LengthOf(b);
    if (!doCross) {
        if (WereInOrder(a, b)) gain -= kOrderCost;
        if (WereInOrder(b, a)) gain += kOrderCost;
        if (gain < kNeighbourGain * length) return false;
    }
    if (gain < (doCross ? -kUncrossLoss * length : kLeastGain) || !m_seating.FitsSwapped(a, b)) return false;
    // Where labels are of one size and in one row, crossing leaders gain, and do not cross once exchanged.
    return (gain >= kLeastGain && doCross) ||
           !m_seating.DoLeadersCross(a, m_seating.CentreInSeatOf(a, b), b, m_seating.CentreInSeatOf(b, a));
}

/// Whether both stood on one side before, `a` first.
bool LeaderSwaps::WereInOrder(std::uint32_t a, std::uint32_t b) const {
    const std::size_t lane = m_seating.LaneOf(a);
    if (!m_seating.IsHome(a, lane) || !m_seating.IsHome(b, lane)) return false;
    const int axis = m_seating.LaneAt(lane).Along();
    const auto& labels = m_seating.Problem().labels;
    return labels[a].centre[axis] < labels[b].centre[axis];
}

}  // namespace zrcallouts
