#include "zrk/illustration/RankIndex.h"

#include <algorithm>

namespace zrk::illustration {
namespace {

std::size_t LowestBit(std::size_t place) { return place & (~place + 1); }

}  // namespace

void RankIndex::Insert(unsigned number) {
    // A new place starts with the sum of the places it covers.
    while (m_sums.size() <= number) {
        const std::size_t place = m_sums.size();
        int sum = 0;
        for (std::size_t below = place - 1; below > place - LowestBit(place); below -= LowestBit(below)) {
            sum += m_sums[below];
        }
        m_sums.push_back(sum);
    }
    Add(number, 1);
}

void RankIndex::Add(std::size_t place, int change) {
    for (; place < m_sums.size(); place += LowestBit(place)) m_sums[place] += change;
}

unsigned RankIndex::CountBelow(unsigned number) const {
    int count = 0;
    std::size_t place = std::min<std::size_t>(number, m_sums.size());
    for (place -= place > 0 ? 1 : 0; place > 0; place -= LowestBit(place)) count += m_sums[place];
    return static_cast<unsigned>(count);
}

}  // namespace zrk::illustration
