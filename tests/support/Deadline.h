// A limit on what a test may take.

#pragma once

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <thread>

namespace zrtest {

/// Ends the process when it still lives after `limit`: threads that wait for each other cannot be stopped.
class Deadline {
public:
    explicit Deadline(std::chrono::seconds limit)
        : m_watch([limit, reached = m_reached.get_future()] {
              if (reached.wait_for(limit) == std::future_status::ready) return;
              std::fputs("Threads wait for each other.\n", stderr);
              std::abort();
          }) {}
    Deadline(const Deadline&) = delete;
    Deadline& operator=(const Deadline&) = delete;
    ~Deadline() {
        m_reached.set_value();
        m_watch.join();
    }

private:
    std::promise<void> m_reached;
    std::thread m_watch;
};

}  // namespace zrtest
