#include "zrannotations/ItemIndex.h"

#include <utility>

#include "zrannotations/Callout.h"

namespace zrannotations {

ItemIndex::ItemIndex() = default;

ItemIndex::~ItemIndex() = default;

// The caller's reference keeps the carrier alive, so that nothing is freed under the lock.
void ItemIndex::Count(unsigned id, const du::SmartPtr<Callout>& carrier, int change) {
    const std::lock_guard hold(m_mutex);
    if (m_isClosed) return;
    const auto entry = m_carriers.try_emplace(id).first;
    const auto count = entry->second.try_emplace(carrier, 0).first;
    count->second += change;
    if (count->second == 0) entry->second.erase(count);
    if (entry->second.empty()) m_carriers.erase(entry);
}

bool ItemIndex::IsUsed(unsigned id) const {
    const std::lock_guard hold(m_mutex);
    return m_carriers.count(id) != 0;
}

std::vector<du::SmartPtr<Callout>> ItemIndex::Find(unsigned id) const {
    std::vector<du::SmartPtr<Callout>> found;
    const std::lock_guard hold(m_mutex);
    const auto entry = m_carriers.find(id);
    if (entry == m_carriers.end()) return found;
    for (const auto& [carrier, count] : entry->second) found.push_back(carrier);
    return found;
}

void ItemIndex::Close() {
    std::unordered_map<unsigned, Carriers> released;
    const std::lock_guard hold(m_mutex);
    released.swap(m_carriers);
    m_isClosed = true;
}

}  // namespace zrannotations
