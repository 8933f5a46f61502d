// A lock for a few instructions that may lie in static storage.

#pragma once

#include <atomic>
#include <thread>

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
    std::atomic<std::thread::id> m_holder{};  // tells a self-deadlock from waiting for another thread
};

}  // namespace dp
