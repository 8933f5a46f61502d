#include "du/TaskPool.h"

#include "du/Assert.h"

namespace du {

TaskPool::TaskPool(unsigned threads) {
    DU_ASSERT(threads > 0, "A task pool needs a thread.");
    for (unsigned i = 0; i < threads; ++i) m_threads.emplace_back([this] { Work(); });
}

TaskPool::~TaskPool() { Shutdown(); }

bool TaskPool::InsertTask(const SmartPtr<Task>& task) {
    const int priority = task->GetPriority();
    {
        const std::lock_guard hold(m_mutex);
        if (m_isShutDown) return false;
        m_queue.emplace(Place(-priority, m_inserted++), task);
    }
    m_wake.notify_one();
    return true;
}

void TaskPool::WaitIdle() {
    std::unique_lock hold(m_mutex);
    m_idle.wait(hold, [this] { return m_queue.empty() && m_running == 0; });
    if (m_failure) std::rethrow_exception(std::exchange(m_failure, nullptr));
}

void TaskPool::Shutdown() {
    std::map<Place, SmartPtr<Task>> dropped;
    std::vector<std::thread> threads;
    {
        const std::lock_guard hold(m_mutex);
        m_isShutDown = true;
        dropped.swap(m_queue);
        threads.swap(m_threads);
    }
    m_wake.notify_all();
    for (const auto& [place, task] : dropped) task->Abort();
    for (auto& thread : threads) thread.join();
    m_idle.notify_all();
}

void TaskPool::Work() {
    while (SmartPtr<Task> task = TakeNext()) {
        RunOne(task);
        task = nullptr;
        const std::lock_guard hold(m_mutex);
        if (--m_running == 0 && m_queue.empty()) m_idle.notify_all();
    }
}

SmartPtr<Task> TaskPool::TakeNext() {
    std::unique_lock hold(m_mutex);
    m_wake.wait(hold, [this] { return m_isShutDown || !m_queue.empty(); });
    if (m_queue.empty()) return nullptr;
    SmartPtr<Task> task = std::move(m_queue.begin()->second);
    m_queue.erase(m_queue.begin());
    ++m_running;
    return task;
}

void TaskPool::RunOne(const SmartPtr<Task>& task) {
    try {
        task->Run();
        task->TaskComplete();
    } catch (...) {
        const std::lock_guard hold(m_mutex);
        if (!m_failure) m_failure = std::current_exception();
    }
}

}  // namespace du
