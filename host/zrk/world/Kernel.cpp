#include "zrk/world/Kernel.h"

#include <utility>

#include "du/ProcessWide.h"
#include "zrk/event/BaseAsyncEvent.h"
#include "zrk/world/Burst.h"

namespace zrk {
namespace {

constexpr int kCancelled = 1;

du::ProcessWide<Kernel> theKernel;

}  // namespace

du::SmartPtr<Kernel> Kernel::GetKernel() { return theKernel.Get(); }

void Kernel::Start() { theKernel.Exchange(new Kernel); }

void Kernel::Stop() {
    const auto kernel = theKernel.Exchange(nullptr);
    if (!kernel) return;
    kernel->StopDispatcher();
    kernel->Close();
    kernel->CancelPendingEvents();
}

Kernel::~Kernel() { StopDispatcher(); }

du::Symbol Kernel::GetObjectClass() const {
    static const du::Symbol kClass("zrk::Kernel");
    return kClass;
}

void Kernel::Post(Work work) {
    {
        const std::lock_guard hold(m_queueMutex);
        if (!m_isClosed) m_queue.push_back(std::exchange(work, nullptr));
    }
    m_wake.notify_one();
    if (work) work(kCancelled);
}

bool Kernel::RunNext() {
    Work work;
    {
        const std::lock_guard hold(m_queueMutex);
        if (m_queue.empty()) return false;
        work = std::move(m_queue.front());
        m_queue.pop_front();
    }
    work(0);
    return true;
}

std::size_t Kernel::DispatchEvents() {
    Burst burst;
    std::size_t count = 0;
    do {
        while (RunNext()) ++count;
    } while (burst.Tell() > 0);
    return count;
}

void Kernel::Close() {
    const std::lock_guard hold(m_queueMutex);
    m_isClosed = true;
}

void Kernel::StartDispatcher() {
    if (m_dispatcher.joinable()) return;
    m_isStopping = false;
    m_dispatcher = std::thread([this] { DispatchUntilStopped(); });
}

void Kernel::DispatchUntilStopped() {
    Burst burst;
    while (WaitForWork()) {
        RunNext();
        if (IsIdle()) burst.Tell();
    }
    burst.Tell();
}

/// False when the dispatcher is to stop.
bool Kernel::WaitForWork() {
    std::unique_lock hold(m_queueMutex);
    m_wake.wait(hold, [this] { return m_isStopping || !m_queue.empty(); });
    return !m_isStopping;
}

bool Kernel::IsIdle() {
    const std::lock_guard hold(m_queueMutex);
    return m_queue.empty();
}

void Kernel::StopDispatcher() {
    if (!m_dispatcher.joinable()) return;
    {
        const std::lock_guard hold(m_queueMutex);
        m_isStopping = true;
    }
    m_wake.notify_all();
    m_dispatcher.join();
}

void Kernel::CancelPendingEvents() {
    std::deque<Work> queue;
    {
        const std::lock_guard hold(m_queueMutex);
        queue.swap(m_queue);
    }
    for (const auto& work : queue) work(kCancelled);
    for (const auto& object : GetManaged()) {
        if (const auto event = du::DynamicCast<BaseAsyncEvent>(object)) event->Complete(kCancelled);
    }
}

}  // namespace zrk
