// Starts and stops the host: what an application's main function, or a test, needs around everything else.

#pragma once

namespace zrkapp::illustration {

/// One at a time. Made and destroyed on the application's main thread.
class HostSession {
public:
    /// Starts kernel, world and application. `poolThreads` of the task pool; at least one.
    explicit HostSession(unsigned poolThreads);
    HostSession(const HostSession&) = delete;
    HostSession& operator=(const HostSession&) = delete;
    /// Stops them in the opposite order: running tasks are waited for, events without an answer are
    /// cancelled.
    ~HostSession();
};

}  // namespace zrkapp::illustration
