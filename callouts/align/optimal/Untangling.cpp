#include "callouts/align/optimal/Untangling.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <tuple>

namespace zrcallouts {
namespace {

constexpr std::size_t kMostMoves = 40;  // for each pair, the cheapest first
constexpr double kMostTries = 400.0;    // for a sheet
constexpr double kMostWork = 2e7;       // tries, times the cube of leaders: tangled ones are dear to exchange
constexpr std::size_t kMostFaults = 200;  // more are no sheet that could be mended

}  // namespace

bool Untangling::Run() {
    m_faults = Measure();
    if (m_faults.size() > kMostFaults) return false;
    const double leaders = LeaderCount();
    m_triesLeft = static_cast<std::size_t>(std::min(kMostTries, kMostWork / (leaders * leaders * leaders)));
    const auto mend = [this](const LayoutFault& fault) {
        return fault.kind == LayoutFaultKind::LeadersCross && Mend(fault);
    };
    for (bool isMended = true; isMended && m_triesLeft > 0;) {
        const Faults faults = m_faults;
        isMended = std::any_of(faults.begin(), faults.end(), mend);
    }
    return m_faults.empty();
}

double Untangling::LeaderCount() const {
    const auto& labels = m_seating.Problem().labels;
    return std::accumulate(labels.begin(), labels.end(), 0.0, [](double count, const LayoutLabel& label) {
        return count + static_cast<double>(label.anchors.size());
    });
}

Untangling::Faults Untangling::Measure() const {
    return MeasureLayout(m_seating.Problem(), m_seating.Centres()).faults;
}

bool Untangling::Mend(const LayoutFault& fault) {
    FindMoves(fault);
    return std::any_of(m_moves.begin(), m_moves.end(), [this](const Move& move) { return Try(move); });
}

void Untangling::FindMoves(const LayoutFault& fault) {
    m_moves.clear();
    AddMoves(fault.label);
    AddMoves(fault.other);
    const std::size_t count = std::min(m_moves.size(), kMostMoves);
    const auto end = m_moves.begin() + static_cast<std::ptrdiff_t>(count);
    std::partial_sort(m_moves.begin(), end, m_moves.end(), [](const Move& a, const Move& b) {
        return std::tie(a.loss, a.label, a.lane, a.other) < std::tie(b.loss, b.label, b.lane, b.other);
    });
    m_moves.erase(end, m_moves.end());
}

void Untangling::AddMoves(std::uint32_t label) {
    const std::size_t from = m_seating.LaneOf(label);
    for (std::size_t lane = 0; lane < m_seating.LaneCount(); ++lane) {
        if (lane != from && m_seating.HasRoom(lane, label))
            m_moves.push_back(
                {m_seating.LoneCost(label, lane) - m_seating.CostOf(label), label, lane, label});
        for (const std::uint32_t other : m_seating.RowOf(lane)) {
            if (other == label || !m_seating.FitsSwapped(label, other)) continue;
            const double length =
                m_seating.LengthInSeatOf(label, other) + m_seating.LengthInSeatOf(other, label);
            m_moves.push_back(
                {length - m_seating.LengthOf(label) - m_seating.LengthOf(other), label, lane, other});
        }
    }
}

bool Untangling::Try(const Move& move) {
    if (m_triesLeft == 0) return false;
    --m_triesLeft;
    const Seating::Rows before = m_seating.Save();
    const double cost = m_seating.Cost();
    const std::size_t from = m_seating.LaneOf(move.label);
    if (move.other == move.label) {
        Take(move.label, move.lane);
    } else {
        m_seating.Swap(move.label, move.other);
    }
    m_seating.Settle(from);
    m_seating.Settle(move.lane);
    m_swaps.RunAnew();
    Faults faults = Measure();
    if (faults.size() < m_faults.size() && m_seating.Cost() - cost <= Worth(faults)) {
        m_faults = std::move(faults);
        return true;
    }
    m_seating.Restore(before);
    return false;
}

/// What leaving these faults instead may cost: whatever it takes if none is left.
double Untangling::Worth(const Faults& left) const {
    if (left.empty()) return std::numeric_limits<double>::infinity();
    return kFaultCost * static_cast<double>(m_faults.size() - left.size());
}

void Untangling::Take(std::uint32_t label, std::size_t lane) {
    const std::size_t from = m_seating.LaneOf(label);
    Seating::Labels left = m_seating.RowOf(from);
    std::erase(left, label);
    Seating::Labels joined = m_seating.RowOf(lane);
    joined.insert(joined.begin() + static_cast<std::ptrdiff_t>(m_seating.PlaceIn(lane, label)), label);
    m_seating.Replace(m_seating.Whole(from), left);
    m_seating.Replace(m_seating.Whole(lane), joined);
}

}  // namespace zrcallouts
