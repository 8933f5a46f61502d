#include "callouts/align/optimal/LaneChoice.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <limits>
#include <queue>
#include <utility>

namespace zrcallouts {
namespace {

constexpr std::size_t kMovesEach = 4;
constexpr double kNever = std::numeric_limits<double>::infinity();

class Chooser {
public:
    explicit Chooser(Seating& seating)
        : m_seating(seating),
          m_lanes(seating.LaneCount()),
          m_labels(seating.Problem().labels.size()),
          m_costs(m_labels * m_lanes),
          m_choice(m_labels, 0),
          m_loads(m_lanes, 0.0) {}

    std::vector<std::size_t> Choose() {
        for (std::uint32_t label = 0; label < m_labels; ++label) {
            if (!IsPinned(label)) ChooseCheapest(label);
        }
        // Labels of many sizes may push each other around; this many moves are more than any sheet needs.
        std::size_t left = kMovesEach * m_labels;
        for (std::size_t lane = FullLane(); lane < m_lanes && left > 0; lane = FullLane(), --left) {
            if (m_ways.empty()) FindWays();
            if (!Relieve(lane) && !DoubleOne()) break;
        }
        return std::move(m_choice);
    }

private:
    /// What it costs to move a label from one lane to another.
    using Move = std::pair<double, std::uint32_t>;
    using Moves = std::priority_queue<Move, std::vector<Move>, std::greater<>>;

    bool IsPinned(std::uint32_t label) const { return m_seating.Problem().labels[label].isPinned; }
    double& Cost(std::uint32_t label, std::size_t lane) { return m_costs[label * m_lanes + lane]; }
    Moves& Ways(std::size_t from, std::size_t to) { return m_ways[from * m_lanes + to]; }

    void ChooseCheapest(std::uint32_t label) {
        for (std::size_t lane = 0; lane < m_lanes; ++lane) {
            Cost(label, lane) = m_seating.Holds(lane, label) ? m_seating.LoneCost(label, lane) : kNever;
            if (Cost(label, lane) < Cost(label, m_choice[label])) m_choice[label] = lane;
        }
        m_loads[m_choice[label]] += m_seating.LoadOf(label, m_choice[label]);
    }

    /// The lane that is overfull the most, of those that may still be relieved.
    std::size_t FullLane() const {
        std::size_t fullest = m_lanes;
        double most = 1e-6;
        for (std::size_t lane = 0; lane < m_lanes; ++lane) {
            const double over = m_loads[lane] - m_seating.Capacity(lane);
            if (over > most) {
                most = over;
                fullest = lane;
            }
        }
        return fullest;
    }

    void FindWays() {
        m_ways.assign(m_lanes * m_lanes, {});
        for (std::uint32_t label = 0; label < m_labels; ++label) {
            if (!IsPinned(label)) AddWays(label);
        }
    }

    void AddWays(std::uint32_t label) {
        const std::size_t from = m_choice[label];
        for (std::size_t to = 0; to < m_lanes; ++to) {
            if (to != from && Cost(label, to) < kNever)
                Ways(from, to).emplace(Cost(label, to) - Cost(label, from), label);
        }
    }

    const Move* Cheapest(std::size_t from, std::size_t to) {
        Moves& moves = Ways(from, to);
        while (!moves.empty() && m_choice[moves.top().second] != from) moves.pop();
        return moves.empty() ? nullptr : &moves.top();
    }

    /// Moves one label off the lane, and one each off the lanes on the cheapest way to a lane with room.
    /// Bellman's and Ford's method: moves may gain.
    bool Relieve(std::size_t full) {
        std::vector<double> costs(m_lanes, kNever);
        std::vector<std::size_t> before(m_lanes, m_lanes);
        costs[full] = 0.0;
        for (std::size_t round = 1; round < m_lanes; ++round) {
            for (std::size_t from = 0; from < m_lanes; ++from) {
                if (costs[from] == kNever) continue;
                for (std::size_t to = 0; to < m_lanes; ++to) Reach(from, to, full, costs, before);
            }
        }
        std::size_t end = m_lanes;
        for (std::size_t lane = 0; lane < m_lanes; ++lane) {
            if (lane == full || costs[lane] == kNever || !HasRoomAfter(before[lane], lane)) continue;
            if (end == m_lanes || costs[lane] < costs[end]) end = lane;
        }
        if (end == m_lanes) return false;
        for (std::size_t lane = end; lane != full; lane = before[lane]) MoveOne(before[lane], lane);
        return true;
    }

    void Reach(std::size_t from, std::size_t to, std::size_t full, std::vector<double>& costs,
               std::vector<std::size_t>& before) {
        if (to == from || to == full || IsOnWay(to, from, full, before)) return;
        const Move* move = Cheapest(from, to);
        if (move == nullptr || costs[from] + move->first >= costs[to]) return;
        costs[to] = costs[from] + move->first;
        before[to] = from;
    }

    static bool IsOnWay(std::size_t lane, std::size_t end, std::size_t start,
                        const std::vector<std::size_t>& before) {
        while (end != start && end != lane) end = before[end];
        return end == lane;
    }

    bool HasRoomAfter(std::size_t from, std::size_t lane) {
        const Move* move = Cheapest(from, lane);
        return move != nullptr &&
               m_loads[lane] + m_seating.LoadOf(move->second, lane) <= m_seating.Capacity(lane);
    }

    void MoveOne(std::size_t from, std::size_t to) {
        const std::uint32_t label = Cheapest(from, to)->second;
        m_loads[from] -= m_seating.LoadOf(label, from);
        m_loads[to] += m_seating.LoadOf(label, to);
        m_choice[label] = to;
        AddWays(label);
    }

    /// The fullest lane of those that can have a second row gets one.
    bool DoubleOne() {
        std::size_t chosen = m_lanes;
        for (std::size_t lane = 0; lane < m_lanes; ++lane) {
            if (!m_seating.CanDouble(lane)) continue;
            if (chosen == m_lanes || m_loads[lane] > m_loads[chosen]) chosen = lane;
        }
        if (chosen == m_lanes) return false;
        m_seating.Double(chosen);
        m_loads[chosen] = 0.0;
        for (std::uint32_t label = 0; label < m_labels; ++label) {
            if (!IsPinned(label) && m_choice[label] == chosen)
                m_loads[chosen] += m_seating.LoadOf(label, chosen);
        }
        return true;
    }

    Seating& m_seating;
    std::size_t m_lanes;
    std::size_t m_labels;
    std::vector<double> m_costs;  // of each label on each lane
    std::vector<std::size_t> m_choice;
    std::vector<double> m_loads;
    std::vector<Moves> m_ways;  // from each lane to each; moves of labels that have left since are skipped
};

/// The nearest lane on the label's side; the number of lanes if there is none.
std::size_t HomeOf(const Seating& seating, std::uint32_t label) {
    std::size_t home = seating.LaneCount();
    double least = kNever;
    const ScreenPoint& centre = seating.Problem().labels[label].centre;
    for (std::size_t lane = 0; lane < seating.LaneCount(); ++lane) {
        if (!seating.IsHome(label, lane) || !seating.Holds(lane, label)) continue;
        const Lane& on = seating.LaneAt(lane);
        const double place = std::clamp(centre[on.Along()], on.Least(), on.Greatest());
        const double distance = Distance(centre, seating.CentreAt(label, lane, place));
        if (distance < least) {
            least = distance;
            home = lane;
        }
    }
    return home;
}

}  // namespace

std::vector<std::size_t> ChooseLanes(Seating& seating) { return Chooser(seating).Choose(); }

std::vector<std::size_t> KeepLanes(const Seating& seating) {
    std::vector<std::size_t> lanes(seating.Problem().labels.size(), 0);
    for (std::uint32_t label = 0; label < lanes.size(); ++label) {
        if (seating.Problem().labels[label].isPinned) continue;
        lanes[label] = HomeOf(seating, label);
        if (lanes[label] == seating.LaneCount()) return {};
    }
    return seating.Fit(lanes) ? lanes : std::vector<std::size_t>();
}

}  // namespace zrcallouts
