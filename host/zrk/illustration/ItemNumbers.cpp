#include "zrk/illustration/ItemNumbers.h"

#include <algorithm>

namespace zrk::illustration {

unsigned ItemNumbers::Give(unsigned above, unsigned first, unsigned step) {
    Level& level = m_levels[above];
    unsigned number = level.last == 0 ? first : level.last + step;
    while (!level.used.insert(number).second) number += step;
    level.last = number;
    return number;
}

bool ItemNumbers::Take(unsigned above, unsigned number) {
    Level& level = m_levels[above];
    level.last = std::max(level.last, number);
    return level.used.insert(number).second;
}

void ItemNumbers::Reserve(unsigned above, unsigned number) { m_levels[above].used.insert(number); }

void ItemNumbers::Free(unsigned above, unsigned number) { m_levels[above].used.erase(number); }

unsigned ItemNumbers::GetLast(unsigned above) const {
    const auto level = m_levels.find(above);
    return level != m_levels.end() ? level->second.last : 0;
}

void ItemNumbers::SetLast(unsigned above, unsigned last) {
    Level& level = m_levels[above];
    level.last = level.used.empty() ? last : std::max(last, *level.used.rbegin());
}

ItemNumbers::Lasts ItemNumbers::GetLasts() const {
    Lasts lasts;
    for (const auto& [above, level] : m_levels) {
        if (level.last != 0) lasts.emplace(above, level.last);
    }
    return lasts;
}

}  // namespace zrk::illustration
