// Threads that start together.

#pragma once

#include <cstddef>
#include <latch>
#include <thread>
#include <vector>

namespace zrtest {

/// Calls `action(i)` for each i below `count`, each on a thread of its own, all at the same time; returns
/// when all are done.
template <class Action>
void OnThreads(std::size_t count, const Action& action) {
    std::latch start(static_cast<std::ptrdiff_t>(count));
    std::vector<std::jthread> threads;
    for (std::size_t i = 0; i < count; ++i) {
        threads.emplace_back([&start, &action, i] {
            start.arrive_and_wait();
            action(i);
        });
    }
}

}  // namespace zrtest
