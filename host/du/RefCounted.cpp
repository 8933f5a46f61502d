#include "du/RefCounted.h"

namespace du {

RefCounted::~RefCounted() = default;

bool RefCounted::TryAddReference(const void*) const {
    unsigned count = m_count.load(std::memory_order_relaxed);
    while (count != 0) {
        if (m_count.compare_exchange_weak(count, count + 1, std::memory_order_relaxed)) return true;
    }
    return false;
}

}  // namespace du
