#include "zrannotations/ItemIndex.h"

#include <utility>

#include "zrannotations/Callout.h"

namespace zrannotations {

ItemIndex::ItemIndex(UseChanged onUseChanged) : m_onUseChanged(std::move(onUseChanged)) {}

ItemIndex::~ItemIndex() = default;

void ItemIndex::Count(unsigned id, const du::SmartPtr<Callout>& carrier, int change) {
    if (Enter(id, carrier, change) && m_onUseChanged) m_onUseChanged(id);
}

// The caller's reference keeps the carrier alive, so that nothing is freed under the lock.
bool ItemIndex::Enter(unsigned id, const du::SmartPtr<Callout>& carrier, int change) {
    const std::lock_guard hold(m_mutex);
    if (m_isClosed) return false;
    const bool wasCarried = IsCarried(id);
    const auto count = m_carriers.try_emplace({id, carrier}, 0).first;
    count->second += change;
    if (count->second == 0) m_carriers.erase(count);
    return IsCarried(id) != wasCarried;
}

bool ItemIndex::IsUsed(unsigned id) const {
    const std::lock_guard hold(m_mutex);
    return IsCarried(id);
}

bool ItemIndex::IsCarried(unsigned id) const {
    const auto first = m_carriers.lower_bound({id, nullptr});
    return first != m_carriers.end() && first->first.first == id;
}

std::vector<du::SmartPtr<Callout>> ItemIndex::Find(unsigned id) const {
    std::vector<du::SmartPtr<Callout>> found;
    const std::lock_guard hold(m_mutex);
    for (auto entry = m_carriers.lower_bound({id, nullptr});
         entry != m_carriers.end() && entry->first.first == id; ++entry)
        found.push_back(entry->first.second);
    return found;
}

void ItemIndex::Close() {
    decltype(m_carriers) released;
    const std::lock_guard hold(m_mutex);
    released.swap(m_carriers);
    m_isClosed = true;
}

}  // namespace zrannotations
