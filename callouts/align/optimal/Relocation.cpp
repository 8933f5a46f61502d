#include "callouts/align/optimal/Relocation.h"

#include <algorithm>

namespace zrcallouts {
namespace {

constexpr int kMostPasses = 6;
constexpr double kTouching = 0.5;   // pixels; neighbours as near as this hold each other
constexpr double kLeastGain = 1.5;  // pixels of leader

std::ptrdiff_t Offset(std::size_t index) { return static_cast<std::ptrdiff_t>(index); }

}  // namespace

Relocation::Relocation(Seating& seating)
    : m_seating(seating),
      m_rooms(seating.LaneCount()),
      m_leaving(seating.Problem().labels.size()),
      m_tried(m_leaving.size() * m_rooms.size(), 0) {}

bool Relocation::Run() {
    bool isAnyChanged = false;
    for (int pass = 0; pass < kMostPasses; ++pass) {
        for (std::size_t lane = 0; lane < m_seating.LaneCount(); ++lane) Appraise(lane);
        FindMoves();
        bool isChanged = false;
        for (const Move& move : m_moves) isChanged = Try(move) || isChanged;
        if (!isChanged) break;
        isAnyChanged = true;
    }
    return isAnyChanged;
}

/// Sums up the pulls of labels that touch.
void Relocation::Appraise(std::size_t lane) {
    const auto& labels = m_seating.RowOf(lane);
    const auto& places = m_seating.PlacesOf(lane);
    const Lane& on = m_seating.LaneAt(lane);
    auto& rooms = m_rooms[lane];
    rooms.assign(labels.size(), {});
    for (std::size_t first = 0; first < labels.size();) {
        std::size_t end = first + 1;
        while (end < labels.size() && places[end] - places[end - 1] <
                                          m_seating.Pitch(lane, labels[end - 1], labels[end]) + kTouching)
            ++end;
        const double margin = 0.5 * m_seating.LoadOf(labels[first], lane) + kTouching;
        const bool isFirstHeld = places[first] - on.Least() < margin;
        const bool isLastHeld = on.Greatest() - places[end - 1] < margin;
        double all = 0.0;
        for (std::size_t i = first; i < end; ++i) all += m_seating.PullOf(labels[i]);
        double before = 0.0;
        for (std::size_t i = first; i < end; ++i) {
            const double pull = m_seating.PullOf(labels[i]);
            rooms[i] = {before, all - before - pull, isFirstHeld, isLastHeld};
            before += pull;
        }
        first = end;
    }
}

/// What its neighbours save at the most when the label goes.
double Relocation::Relief(std::uint32_t label) const {
    const std::size_t lane = m_seating.LaneOf(label);
    const Room& room = m_rooms[lane][m_seating.IndexOf(label)];
    return m_seating.LoadOf(label, lane) * std::max({room.after, -room.before, 0.0});
}

/// What they pay at the least when it comes.
double Relocation::Price(std::uint32_t label, std::size_t lane) const {
    const auto& labels = m_seating.RowOf(lane);
    const std::size_t i = PlaceIn(labels, lane, m_seating.WishOf(label, lane));
    if (i == 0 || i == labels.size()) return 0.0;
    const auto& places = m_seating.PlacesOf(lane);
    const double free = places[i] - places[i - 1] - m_seating.Pitch(lane, labels[i - 1], labels[i]);
    if (free > kTouching) return 0.0;
    const Room& next = m_rooms[lane][i];
    const Room& last = m_rooms[lane][i - 1];
    const double after = last.after;
    const double before = next.before;
    double pull = 0.5 * (after - before);
    if (next.isLastHeld) pull = -before;
    if (next.isFirstHeld) pull = next.isLastHeld ? std::max(after, -before) : after;
    return m_seating.LoadOf(label, lane) * std::max(pull, 0.0);
}

double Relocation::GainOf(std::uint32_t label, double relief, std::size_t lane) const {
    const double gain = m_seating.CostOf(label) + relief - m_seating.LoneCost(label, lane);
    return gain < kLeastGain ? 0.0 : gain - Price(label, lane);
}

void Relocation::FindMoves() {
    m_moves.clear();
    for (std::size_t from = 0; from < m_seating.LaneCount(); ++from) {
        for (const std::uint32_t label : m_seating.RowOf(from)) {
            const double relief = Relief(label);
            for (std::size_t lane = 0; lane < m_seating.LaneCount(); ++lane) {
                if (lane == from) continue;
                const double gain = GainOf(label, relief, lane);
                if (gain > kLeastGain && m_seating.HasRoom(lane, label))
                    m_moves.push_back({gain, label, lane});
            }
        }
    }
    std::stable_sort(m_moves.begin(), m_moves.end(),
                     [](const Move& a, const Move& b) { return a.gain > b.gain; });
}

std::size_t Relocation::PlaceIn(const Seating::Labels& labels, std::size_t lane, double wish) const {
    const auto next =
        std::lower_bound(labels.begin(), labels.end(), wish,
                         [&](std::uint32_t label, double at) { return m_seating.WishOf(label, lane) < at; });
    return static_cast<std::size_t>(next - labels.begin());
}

/// Earlier moves of the pass may have changed what this one gains.
bool Relocation::Try(const Move& move) {
    const std::size_t from = m_seating.LaneOf(move.label);
    if (m_seating.IsSpent() || from == move.lane || !m_seating.HasRoom(move.lane, move.label)) return false;
    if (IsVain(move) || GainOf(move.label, Relief(move.label), move.lane) < kLeastGain) return false;
    m_tried[move.label * m_rooms.size() + move.lane] = m_seating.Now();
    const Leaving leaving = Leave(move.label);
    // Where it comes it costs no less than alone there.
    if (leaving.saved - m_seating.LoneCost(move.label, move.lane) < kLeastGain) return false;
    const auto& other = m_seating.RowOf(move.lane);
    const std::size_t at = PlaceIn(other, move.lane, m_seating.WishOf(move.label, move.lane));
    const auto joining = m_seating.Around(move.lane, at, m_seating.LoadOf(move.label, move.lane));
    m_joined.assign(other.begin() + Offset(joining.first), other.begin() + Offset(joining.end));
    m_joined.insert(m_joined.begin() + Offset(at - joining.first), move.label);
    const double paid = m_seating.CostWith(joining, m_joined) - m_seating.CostOf(joining);
    if (leaving.saved - paid < kLeastGain) return false;
    m_seating.Replace(leaving.window, Left(leaving.window, move.label));
    m_seating.Replace(joining, m_joined);
    Appraise(from);
    Appraise(move.lane);
    return true;
}

bool Relocation::IsVain(const Move& move) const {
    const std::uint64_t tried = m_tried[move.label * m_rooms.size() + move.lane];
    return m_seating.LastChangeOf(m_seating.LaneOf(move.label)) <= tried &&
           m_seating.LastChangeOf(move.lane) <= tried;
}

const Relocation::Leaving& Relocation::Leave(std::uint32_t label) {
    Leaving& leaving = m_leaving[label];
    const std::size_t from = m_seating.LaneOf(label);
    if (m_seating.LastChangeOf(from) <= leaving.found) return leaving;
    const auto window = m_seating.Around(from, m_seating.IndexOf(label), m_seating.LoadOf(label, from));
    leaving = {window, m_seating.CostOf(window) - m_seating.CostWith(window, Left(window, label)),
               m_seating.Now()};
    return leaving;
}

/// The window's labels without this one.
const Seating::Labels& Relocation::Left(const Seating::Window& window, std::uint32_t label) {
    const auto& row = m_seating.RowOf(window.lane);
    m_left.assign(row.begin() + Offset(window.first), row.begin() + Offset(window.end));
    std::erase(m_left, label);
    return m_left;
}

}  // namespace zrcallouts
