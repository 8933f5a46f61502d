// Runs tasks on a fixed number of threads.

#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <map>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

#include "du/SmartPtr.h"
#include "du/Task.h"

namespace du {

/// Higher priorities first, equal ones in the order they came. Any thread.
class TaskPool {
public:
    /// Requires: at least one thread.
    explicit TaskPool(unsigned threads);
    TaskPool(const TaskPool&) = delete;
    TaskPool& operator=(const TaskPool&) = delete;
    ~TaskPool();

    /// Queues the task and returns at once; false after Shutdown. The pool drops its reference when the task
    /// is done.
    bool InsertTask(const SmartPtr<Task>& task);
    /// Waits until nothing is queued or running, then throws the first exception that a task left behind, if
    /// any.
    void WaitIdle();
    /// Aborts what is queued, waits for what runs. Requires: not called from a task.
    void Shutdown();

private:
    // Highest priority first; within one, the order of insertion.
    using Place = std::pair<int, std::uint64_t>;

    void Work();
    void RunOne(const SmartPtr<Task>& task);
    SmartPtr<Task> TakeNext();

    std::mutex m_mutex;  // guards all below
    std::condition_variable m_wake;
    std::condition_variable m_idle;
    std::map<Place, SmartPtr<Task>> m_queue;
    std::uint64_t m_inserted = 0;
    std::size_t m_running = 0;
    bool m_isShutDown = false;
    std::exception_ptr m_failure;
    std::vector<std::thread> m_threads;
};

}  // namespace du
