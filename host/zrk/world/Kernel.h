// The heart of the application: it answers what was asked for later, and keeps alive what waits for an
// answer.

#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

#include "dom/ManagedObject.h"
#include "du/SmartPtr.h"

namespace zrk {

/// Work may be posted from any thread. It runs in order, either when the application pumps (DispatchEvents)
/// or on the kernel's own dispatcher thread.
class Kernel : public dom::ManagedObject {
public:
    /// Status 0: do it; others: the kernel stops, so answer that it was cancelled.
    using Work = std::function<void(int status)>;

    /// Null before Start and after Stop.
    static du::SmartPtr<Kernel> GetKernel();
    static void Start();
    /// Cancels what is pending.
    static void Stop();

    ~Kernel() override;

    du::Symbol GetObjectClass() const override;

    /// Only queues; work that comes when the kernel has stopped is cancelled at once, on the calling thread.
    void Post(Work work);
    /// Runs what is queued, and what that queues in turn, until nothing is left; returns how much was run.
    /// Annotations that change meanwhile are told about once the queue is empty, once each.
    std::size_t DispatchEvents();
    void StartDispatcher();
    /// Waits until the dispatcher has ended; what is queued stays. Requires: not called from the dispatcher.
    void StopDispatcher();
    /// Completes everything that is queued, and every managed event that has not completed, with status 1.
    void CancelPendingEvents();

private:
    bool RunNext();
    void Close();
    void DispatchUntilStopped();
    bool WaitForWork();
    bool IsIdle();

    std::mutex m_queueMutex;  // guards the four below
    std::condition_variable m_wake;
    std::deque<Work> m_queue;
    bool m_isStopping = false;
    bool m_isClosed = false;
    std::thread m_dispatcher;  // touched by StartDispatcher and StopDispatcher only, the application's thread
};

}  // namespace zrk
