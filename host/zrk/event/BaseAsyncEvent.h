// Work that is answered later: it completes exactly once, with a status.

#pragma once

#include <atomic>

#include "dom/Observer.h"

namespace zrk {

/// Complete, Cancel and Progress may be called from any thread; the virtual operations run on the calling
/// one.
class BaseAsyncEvent : public dom::Observer {
public:
    ~BaseAsyncEvent() override;

    virtual void HandleEvent() {}
    /// From 0 to 100.
    virtual void OnProgress(unsigned char) {}
    /// Status 0: answered; others: cancelled or failed.
    virtual void OnComplete(int) {}
    virtual void OnStatus(int) {}

    /// The first call completes the event, then its manager drops it; later calls do nothing.
    void Complete(int status = 0);
    void Progress(unsigned char percent) { OnProgress(percent); }
    /// Asks whoever works for the event to give up; the event completes as always.
    void Cancel() { m_isCancelled.store(true, std::memory_order_relaxed); }
    bool IsCancelled() const { return m_isCancelled.load(std::memory_order_relaxed); }
    bool IsCompleted() const { return m_isCompleted.load(std::memory_order_acquire); }

private:
    std::atomic<bool> m_isCompleted{false};
    std::atomic<bool> m_isCancelled{false};
};

}  // namespace zrk
