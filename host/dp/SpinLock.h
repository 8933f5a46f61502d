// A lock for a few instructions that may lie in static storage.

#pragma once

#include <atomic>

namespace dp {

/// Not re-entrant: taking it twice on one thread ends the process.
class SpinLock {
public:
    constexpr SpinLock() = default;
    SpinLock(const SpinLock&) = delete;
    SpinLock& operator=(const SpinLock&) = delete;

    void Lock();
    void Unlock() noexcept;

private:
    std::atomic<bool> m_isHeld{false};
    std::atomic<const void*> m_holder{
        nullptr};  // a tag of the thread; tells a self-deadlock from waiting for another thread
};

}  // namespace dp
