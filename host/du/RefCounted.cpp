#include "du/RefCounted.h"

namespace du {

RefCounted::~RefCounted() = default;

void RefCounted::AddReference(const void*) const { m_count.fetch_add(1, std::memory_order_relaxed); }

bool RefCounted::TryAddReference(const void*) const {
    unsigned count = m_count.load(std::memory_order_relaxed);
    while (count != 0) {
        if (m_count.compare_exchange_weak(count, count + 1, std::memory_order_relaxed)) return true;
    }
    return false;
}

bool RefCounted::RemoveReference(const void*) const {
    return m_count.fetch_sub(1, std::memory_order_acq_rel) == 1;
}

}  // namespace du
