#include "callouts/align/optimal/Relocation.h"

#include <algorithm>

namespace zrcallouts {
namespace {

constexpr int kMostPasses = 6;
constexpr double kTouching = 0.5;   // pixels; neighbours as near as this hold each other
constexpr double kLeastGain = 1.5;  // pixels of leader
constexpr double kSlack = 1e-9;     // the stiffness of nothing

std::ptrdiff_t Offset(std::size_t index) { return static_cast<std::ptrdiff_t>(index); }

}  // namespace

Relocation::Relocation(Seating& seating)
    : m_seating(seating), m_rooms(seating.LaneCount()), m_appraised(m_rooms.size()) {}

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

double Relocation::Chain::Ease(double most) const {
    return std::clamp(pull / std::max(stiffness, kSlack), 0.0, most);
}

/// How much of the way out of the gap, or into it if it is negative, the one chain goes when the other goes
/// the rest, so that both together pay least.
double Relocation::Share(const Chain& chain, const Chain& other, double way) {
    const double share = (other.pull - chain.pull + other.stiffness * way) /
                         std::max(chain.stiffness + other.stiffness, kSlack);
    return std::clamp(share, std::min(way, 0.0), std::max(way, 0.0));
}

/// Sums up the pulls of labels that touch, unless the lane has hardly moved since the last time.
void Relocation::Appraise(std::size_t lane) {
    if (m_seating.LastMoveOn(lane) <= m_appraised[lane]) return;
    m_appraised[lane] = m_seating.Now();
    const auto& labels = m_seating.RowOf(lane);
    const auto& places = m_seating.PlacesOf(lane);
    m_rooms[lane].resize(labels.size());
    for (std::size_t first = 0; first < labels.size();) {
        std::size_t end = first + 1;
        while (end < labels.size() && places[end] - places[end - 1] <
                                          m_seating.Pitch(lane, labels[end - 1], labels[end]) + kTouching)
            ++end;
        AppraiseChain(lane, first, end);
        first = end;
    }
}

void Relocation::AppraiseChain(std::size_t lane, std::size_t first, std::size_t end) {
    const auto& labels = m_seating.RowOf(lane);
    auto& rooms = m_rooms[lane];
    Chain chain;
    for (std::size_t i = first; i < end; ++i) {
        rooms[i].before = chain;
        chain.Add(-m_seating.PullOf(labels[i]), m_seating.StiffnessOf(labels[i]));
    }
    chain = {};
    for (std::size_t i = end; i-- > first;) {
        rooms[i].after = chain;
        chain.Add(m_seating.PullOf(labels[i]), m_seating.StiffnessOf(labels[i]));
    }
}

Relocation::Chain Relocation::ChainUpTo(std::size_t lane, std::size_t index) const {
    const std::uint32_t label = m_seating.RowOf(lane)[index];
    Chain chain = m_rooms[lane][index].before;
    chain.Add(-m_seating.PullOf(label), m_seating.StiffnessOf(label));
    return chain;
}

Relocation::Chain Relocation::ChainFrom(std::size_t lane, std::size_t index) const {
    const std::uint32_t label = m_seating.RowOf(lane)[index];
    Chain chain = m_rooms[lane][index].after;
    chain.Add(m_seating.PullOf(label), m_seating.StiffnessOf(label));
    return chain;
}

/// What its neighbours save when the label goes.
double Relocation::Relief(std::uint32_t label) const {
    const std::size_t lane = m_seating.LaneOf(label);
    const auto& [before, after] = m_rooms[lane][m_seating.IndexOf(label)];
    const double room = m_seating.LoadOf(label, lane);
    double first = before.Ease(room);
    double second = after.Ease(room);
    if (first + second > room) {
        first = -Share(before, after, -room);
        second = room - first;
    }
    return -before.CostBy(-first) - after.CostBy(-second);
}

/// Where the label's middle has room before the row's label of that index. None: `greatest` is below `least`.
Relocation::Gap Relocation::GapBefore(std::size_t lane, std::size_t index, std::uint32_t label) const {
    const auto& labels = m_seating.RowOf(lane);
    const auto& places = m_seating.PlacesOf(lane);
    const Lane& on = m_seating.LaneAt(lane);
    const double half = 0.5 * m_seating.Problem().labels[label].form.Length(on.Along());
    Gap gap{on.Least() + half, on.Greatest() - half};
    if (index > 0) gap.least = places[index - 1] + m_seating.Pitch(lane, labels[index - 1], label);
    if (index < labels.size()) gap.greatest = places[index] - m_seating.Pitch(lane, label, labels[index]);
    return gap;
}

/// What the label and those that make way for it pay when it comes.
double Relocation::CostIn(std::size_t lane, std::uint32_t label) const {
    const double wish = m_seating.WishOf(label, lane);
    const std::size_t next = PlaceIn(lane, wish);
    const Gap gap = GapBefore(lane, next, label);
    const double lack = gap.least - gap.greatest;
    if (lack <= 0.0) return m_seating.CostAt(label, lane, std::clamp(wish, gap.least, gap.greatest));
    const Chain before = next > 0 ? ChainUpTo(lane, next - 1) : Chain();
    const Chain after = next < m_seating.RowOf(lane).size() ? ChainFrom(lane, next) : Chain();
    const double first = Share(before, after, lack);
    const double paid = before.CostBy(first) + after.CostBy(lack - first);
    return m_seating.CostAt(label, lane, gap.least - first) + std::max(paid, 0.0);
}

/// Whether going elsewhere could gain at all; for most labels it could not.
bool Relocation::MayGain(std::uint32_t label) const {
    const std::size_t from = m_seating.LaneOf(label);
    const auto& [before, after] = m_rooms[from][m_seating.IndexOf(label)];
    const double relief = m_seating.LoadOf(label, from) * std::max({before.pull, after.pull, 0.0});
    const double most = m_seating.CostOf(label) + relief - kLeastGain;
    for (std::size_t lane = 0; lane < m_seating.LaneCount(); ++lane) {
        if (lane != from && m_seating.LoneCost(label, lane) < most) return true;
    }
    return false;
}

void Relocation::FindMoves() {
    m_moves.clear();
    for (std::size_t from = 0; from < m_seating.LaneCount(); ++from) {
        for (const std::uint32_t label : m_seating.RowOf(from)) {
            if (!MayGain(label)) continue;
            const double saved = m_seating.CostOf(label) + Relief(label);
            for (std::size_t lane = 0; lane < m_seating.LaneCount(); ++lane) {
                if (lane == from || saved - m_seating.LoneCost(label, lane) < kLeastGain) continue;
                const double gain = saved - CostIn(lane, label);
                if (gain > kLeastGain && m_seating.HasRoom(lane, label))
                    m_moves.push_back({gain, label, lane});
            }
        }
    }
    std::stable_sort(m_moves.begin(), m_moves.end(),
                     [](const Move& a, const Move& b) { return a.gain > b.gain; });
}

std::size_t Relocation::PlaceIn(std::size_t lane, double wish) const {
    const auto& labels = m_seating.RowOf(lane);
    const auto next =
        std::lower_bound(labels.begin(), labels.end(), wish,
                         [&](std::uint32_t label, double at) { return m_seating.WishOf(label, lane) < at; });
    return static_cast<std::size_t>(next - labels.begin());
}

/// Earlier moves of the pass may have changed what this one gains.
bool Relocation::Try(const Move& move) {
    const std::size_t from = m_seating.LaneOf(move.label);
    if (m_seating.IsSpent() || from == move.lane || !m_seating.HasRoom(move.lane, move.label)) return false;
    const double saved = m_seating.CostOf(move.label) + Relief(move.label);
    if (saved - CostIn(move.lane, move.label) < kLeastGain) return false;
    const auto leaving = Leave(move.label);
    const auto joining = Join(move.lane, move.label);
    const double before = m_seating.CostOf(leaving) + m_seating.CostOf(joining);
    if (before - m_seating.CostWith(leaving, m_left) - m_seating.CostWith(joining, m_joined) < kLeastGain)
        return false;
    m_seating.Replace(leaving, m_left);
    m_seating.Replace(joining, m_joined);
    Appraise(from);
    Appraise(move.lane);
    return true;
}

/// Finds who stays and may move when the label goes.
Seating::Window Relocation::Leave(std::uint32_t label) {
    const std::size_t lane = m_seating.LaneOf(label);
    const auto& row = m_seating.RowOf(lane);
    const auto window = m_seating.Around(lane, m_seating.IndexOf(label), m_seating.LoadOf(label, lane));
    m_left.assign(row.begin() + Offset(window.first), row.begin() + Offset(window.end));
    std::erase(m_left, label);
    return window;
}

/// The same when it comes, itself included.
Seating::Window Relocation::Join(std::size_t lane, std::uint32_t label) {
    const auto& row = m_seating.RowOf(lane);
    const std::size_t at = PlaceIn(lane, m_seating.WishOf(label, lane));
    const auto window = m_seating.Around(lane, at, m_seating.LoadOf(label, lane));
    m_joined.assign(row.begin() + Offset(window.first), row.begin() + Offset(window.end));
    m_joined.insert(m_joined.begin() + Offset(at - window.first), label);
    return window;
}

}  // namespace zrcallouts
