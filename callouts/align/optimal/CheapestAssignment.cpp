#include "callouts/align/optimal/CheapestAssignment.h"

#include <limits>

namespace zrcallouts {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Things and places count from 1 in here; 0 is none.
class Matching {
public:
    explicit Matching(const std::vector<std::vector<double>>& costs)
        : m_costs(costs),
          m_prices(costs.size() + 1),
          m_discounts(costs.front().size() + 1),
          m_thingAt(costs.front().size() + 1),
          m_before(costs.front().size() + 1) {}

    void Add(std::size_t thing) {
        m_thingAt[0] = thing;
        m_least.assign(m_thingAt.size(), kInfinity);
        m_isSeen.assign(m_thingAt.size(), false);
        std::size_t place = 0;
        while (m_thingAt[place] != 0) place = Next(place);
        for (; place != 0; place = m_before[place]) m_thingAt[place] = m_thingAt[m_before[place]];
    }

    [[nodiscard]] std::vector<std::size_t> Places() const {
        std::vector<std::size_t> places(m_costs.size());
        for (std::size_t place = 1; place < m_thingAt.size(); ++place) {
            if (m_thingAt[place] != 0) places[m_thingAt[place] - 1] = place - 1;
        }
        return places;
    }

private:
    /// The nearest place that has not been seen yet.
    std::size_t Next(std::size_t from) {
        m_isSeen[from] = true;
        const std::size_t thing = m_thingAt[from];
        std::size_t nearest = 0;
        double step = kInfinity;
        for (std::size_t place = 1; place < m_thingAt.size(); ++place) {
            if (m_isSeen[place]) continue;
            const double cost = m_costs[thing - 1][place - 1] - m_prices[thing] - m_discounts[place];
            if (cost < m_least[place]) {
                m_least[place] = cost;
                m_before[place] = from;
            }
            if (m_least[place] < step) {
                step = m_least[place];
                nearest = place;
            }
        }
        for (std::size_t place = 0; place < m_thingAt.size(); ++place) {
            if (!m_isSeen[place]) {
                m_least[place] -= step;
                continue;
            }
            m_prices[m_thingAt[place]] += step;
            m_discounts[place] -= step;
        }
        return nearest;
    }

    const std::vector<std::vector<double>>& m_costs;
    std::vector<double> m_prices;
    std::vector<double> m_discounts;
    std::vector<std::size_t> m_thingAt;
    std::vector<std::size_t> m_before;
    std::vector<double> m_least;
    std::vector<bool> m_isSeen;
};

}  // namespace

std::vector<std::size_t> CheapestAssignment(const std::vector<std::vector<double>>& costs) {
    Matching matching(costs);
    for (std::size_t thing = 1; thing <= costs.size(); ++thing) matching.Add(thing);
    return matching.Places();
}

}  // namespace zrcallouts
