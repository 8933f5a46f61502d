#include "callouts/align/optimal/LaneExchange.h"

#include <algorithm>

namespace zrcallouts {
namespace {

constexpr int kMostPasses = 4;
constexpr std::size_t kReach = 6;   // labels to both sides of its place that a label may take the room of
constexpr double kLeastGain = 1.5;  // pixels of leader

}  // namespace

bool LaneExchange::Run() {
    bool isAnyChanged = false;
    for (int pass = 0; pass < kMostPasses; ++pass) {
        m_narrow.clear();
        for (std::size_t lane = 0; lane < m_pulls.size(); ++lane) Appraise(lane);
        FindExchanges();
        bool isChanged = false;
        for (const Exchange& exchange : m_exchanges) isChanged = Try(exchange) || isChanged;
        if (!isChanged) break;
        isAnyChanged = true;
    }
    return isAnyChanged;
}

void LaneExchange::Appraise(std::size_t lane) {
    auto& pulls = m_pulls[lane];
    pulls.assign(1, 0.0);
    for (const std::uint32_t label : m_seating.RowOf(lane))
        pulls.push_back(pulls.back() + m_seating.PullOf(label));
    if (!m_seating.HasRoomForAny(lane)) m_narrow.push_back(lane);
}

/// For every label that would rather be on a lane that has no room for it.
void LaneExchange::FindExchanges() {
    m_exchanges.clear();
    for (std::size_t from = 0; from < m_seating.LaneCount(); ++from) {
        for (const std::uint32_t label : m_seating.RowOf(from)) {
            for (const std::size_t lane : m_narrow) {
                if (lane == from || m_seating.HasRoom(lane, label)) continue;
                FindPartners({label, lane, m_seating.CostOf(label) - m_seating.LoneCost(label, lane)});
            }
        }
    }
    std::stable_sort(m_exchanges.begin(), m_exchanges.end(),
                     [](const Exchange& a, const Exchange& b) { return a.gain > b.gain; });
}

void LaneExchange::FindPartners(const Guest& guest) {
    const std::size_t from = m_seating.LaneOf(guest.label);
    const auto& row = m_seating.RowOf(guest.lane);
    const std::size_t place = m_seating.PlaceIn(guest.lane, guest.label);
    const std::size_t end = std::min(place + kReach, row.size());
    for (std::size_t i = place - std::min(place, kReach); i < end; ++i) {
        const std::uint32_t other = row[i];
        const double lone = guest.gain + m_seating.CostOf(other) - m_seating.LoneCost(other, from);
        const double gain =
            lone - Shift(guest.lane, other, place) - Shift(from, guest.label, m_seating.PlaceIn(from, other));
        if (gain > kLeastGain && Fits(guest.label, other) && Fits(other, guest.label))
            m_exchanges.push_back({gain, guest.label, other});
    }
}

/// What those between pay at the least when one leaves and another comes to a place.
double LaneExchange::Shift(std::size_t lane, std::uint32_t leaving, std::size_t place) const {
    const std::size_t index = m_seating.IndexOf(leaving);
    const auto& pulls = m_pulls[lane];
    const double pull = place <= index ? pulls[index] - pulls[place] : pulls[index + 1] - pulls[place];
    return m_seating.LoadOf(leaving, lane) * pull;
}

/// Whether the label has room on the other one's lane once that has left.
bool LaneExchange::Fits(std::uint32_t label, std::uint32_t instead) const {
    const std::size_t lane = m_seating.LaneOf(instead);
    const double load =
        m_seating.Load(lane) + m_seating.LoadOf(label, lane) - m_seating.LoadOf(instead, lane);
    return m_seating.Holds(lane, label) && load <= m_seating.Capacity(lane);
}

Seating::Labels LaneExchange::RowWith(std::uint32_t label, std::uint32_t instead) const {
    const std::size_t lane = m_seating.LaneOf(instead);
    Seating::Labels row = m_seating.RowOf(lane);
    const auto offset = [](std::size_t index) { return static_cast<std::ptrdiff_t>(index); };
    const std::size_t leaving = m_seating.IndexOf(instead);
    const std::size_t place = m_seating.PlaceIn(lane, label);
    row.erase(row.begin() + offset(leaving));
    row.insert(row.begin() + offset(place > leaving ? place - 1 : place), label);
    return row;
}

/// Earlier exchanges of the pass may have changed what this one gains.
bool LaneExchange::Try(const Exchange& exchange) {
    const std::size_t from = m_seating.LaneOf(exchange.label);
    const std::size_t to = m_seating.LaneOf(exchange.other);
    if (m_seating.IsSpent() || from == to || !Fits(exchange.label, exchange.other) ||
        !Fits(exchange.other, exchange.label))
        return false;
    const auto stay = RowWith(exchange.other, exchange.label);
    const auto come = RowWith(exchange.label, exchange.other);
    const auto all = m_seating.Whole(from);
    const auto others = m_seating.Whole(to);
    const double before = m_seating.CostOf(all) + m_seating.CostOf(others);
    if (before - m_seating.CostWith(all, stay) - m_seating.CostWith(others, come) < kLeastGain) return false;
    m_seating.Replace(all, stay);
    m_seating.Replace(others, come);
    return true;
}

}  // namespace zrcallouts
