#include "dp/SpinLock.h"

#include "du/Assert.h"

namespace dp {

void SpinLock::Lock() {
    const auto me = std::this_thread::get_id();
    while (m_isHeld.exchange(true, std::memory_order_acquire)) {
        DU_ASSERT(m_holder.load(std::memory_order_relaxed) != me, "A thread waits for a spin lock that it holds.");
        std::this_thread::yield();
    }
    m_holder.store(me, std::memory_order_relaxed);
}

void SpinLock::Unlock() noexcept {
    m_holder.store(std::thread::id(), std::memory_order_relaxed);
    m_isHeld.store(false, std::memory_order_release);
}

}  // namespace dp
