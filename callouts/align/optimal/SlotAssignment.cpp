#include "callouts/align/optimal/SlotAssignment.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

#include "callouts/align/optimal/CheapestAssignment.h"

namespace zrcallouts {
namespace {

constexpr double kNearlyFull = 0.75;      // of all lanes' capacity
constexpr std::size_t kMostLabels = 200;  // some fifty milliseconds
constexpr std::size_t kEndSlots = 3;      // near a corner, at each end of a lane
constexpr double kCornerCost = 300.0;     // pixels of leader for each corner slot that it leads over
constexpr double kClearance = 1.0;        // pixels between a leader and a foreign label

class Slots {
public:
    explicit Slots(const Seating& seating) : m_seating(seating) {
        for (std::uint32_t label = 0; label < seating.Problem().labels.size(); ++label) {
            if (!seating.Problem().labels[label].isPinned) m_labels.push_back(label);
        }
        for (std::size_t lane = 0; lane < seating.LaneCount() && !m_labels.empty(); ++lane) Cut(lane);
    }

    [[nodiscard]] std::vector<std::size_t> Assign() const {
        if (m_labels.empty() || m_slots.size() < m_labels.size()) return {};
        std::vector<std::vector<double>> costs(m_labels.size());
        for (std::size_t i = 0; i < m_labels.size(); ++i) {
            std::transform(m_slots.begin(), m_slots.end(), std::back_inserter(costs[i]),
                           [&](const Slot& slot) { return Cost(m_labels[i], slot); });
        }
        const auto assigned = CheapestAssignment(costs);
        std::vector<std::size_t> lanes(m_seating.Problem().labels.size(), 0);
        for (std::size_t i = 0; i < m_labels.size(); ++i) lanes[m_labels[i]] = m_slots[assigned[i]].lane;
        // Labels longer than the mean may have come together on one lane.
        return m_seating.Fit(lanes) ? lanes : std::vector<std::size_t>();
    }

private:
    struct Slot {
        std::size_t lane = 0;
        double place = 0.0;
        bool isAtEnd = false;
    };

    /// Into as many as labels of mean length fit, at equal distances from end to end.
    void Cut(std::size_t lane) {
        double load = 0.0;
        for (const std::uint32_t label : m_labels) load += m_seating.LoadOf(label, lane);
        const double capacity = m_seating.Capacity(lane);
        const auto count =
            static_cast<std::size_t>(std::max(capacity, 0.0) * static_cast<double>(m_labels.size()) / load);
        const double pitch = capacity / static_cast<double>(std::max<std::size_t>(count, 1));
        const double first = m_seating.LaneAt(lane).Least() - 0.5 * m_seating.Problem().rules.gap;
        for (std::size_t i = 0; i < count; ++i) {
            const bool isAtEnd = i < kEndSlots || i + kEndSlots >= count;
            m_slots.push_back({lane, first + (static_cast<double>(i) + 0.5) * pitch, isAtEnd});
        }
    }

    [[nodiscard]] double Cost(std::uint32_t label, const Slot& slot) const {
        const double cost = m_seating.CostAt(label, slot.lane, slot.place);
        return slot.isAtEnd ? cost + CornerCost(label, slot) : cost;
    }

    /// Where two lanes meet, leaders from the end of one easily run into the end of the other, which is
    /// taken on a full sheet.
    [[nodiscard]] double CornerCost(std::uint32_t label, const Slot& slot) const {
        double cost = 0.0;
        const auto& form = m_seating.Problem().labels[label].form;
        const ScreenPoint centre = CentreIn(slot, label);
        for (const Slot& other : m_slots) {
            if (!other.isAtEnd || AxisOf(other) == AxisOf(slot)) continue;
            for (const ScreenPoint& anchor : m_seating.AnchorsOf(label)) {
                const ScreenSegment leader{form.Start(centre, anchor), anchor};
                if (form.IsTouched(CentreIn(other, label), leader, kClearance)) cost += kCornerCost;
            }
        }
        return cost;
    }

    [[nodiscard]] int AxisOf(const Slot& slot) const { return m_seating.LaneAt(slot.lane).Along(); }
    [[nodiscard]] ScreenPoint CentreIn(const Slot& slot, std::uint32_t label) const {
        return m_seating.CentreAt(label, slot.lane, slot.place);
    }

    const Seating& m_seating;
    Seating::Labels m_labels;  // all but the pinned ones
    std::vector<Slot> m_slots;
};

}  // namespace

bool IsNearlyFull(const Seating& seating) {
    if (seating.Problem().labels.size() > kMostLabels) return false;
    double load = 0.0;
    double capacity = 0.0;
    for (std::size_t lane = 0; lane < seating.LaneCount(); ++lane) {
        load += seating.Load(lane);
        capacity += seating.Capacity(lane);
    }
    return load >= kNearlyFull * capacity;
}

std::vector<std::size_t> AssignSlots(const Seating& seating) { return Slots(seating).Assign(); }

}  // namespace zrcallouts
