#include "dp/SpinLock.h"

#include <thread>

#include "du/Assert.h"

namespace dp {
namespace {

// Its address differs from thread to thread.
thread_local char threadTag;

}  // namespace

void SpinLock::Lock() {
    const void* const me = &threadTag;
    while (m_isHeld.exchange(true, std::memory_order_acquire)) {
        DU_ASSERT(m_holder.load(std::memory_order_relaxed) != me,
                  "A thread waits for a spin lock that it holds.");
        std::this_thread::yield();
    }
    m_holder.store(me, std::memory_order_relaxed);
}

void SpinLock::Unlock() noexcept {
    m_holder.store(nullptr, std::memory_order_relaxed);
    m_isHeld.store(false, std::memory_order_release);
}

}  // namespace dp
