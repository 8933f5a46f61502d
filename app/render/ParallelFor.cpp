#include "app/render/ParallelFor.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace zrsheet {

void ParallelFor(std::size_t count, unsigned threads, const std::function<void(std::size_t)>& work) {
    std::atomic<std::size_t> next{0};
    std::mutex mutex;
    std::exception_ptr failure;
    const auto run = [&] {
        try {
            for (std::size_t i = next++; i < count; i = next++) work(i);
        } catch (...) {
            next = count;
            const std::lock_guard lock(mutex);
            if (!failure) failure = std::current_exception();
        }
    };
    {
        std::vector<std::jthread> helpers;
        const std::size_t wanted = std::min<std::size_t>(threads, count);
        for (std::size_t i = 1; i < wanted; ++i) helpers.emplace_back(run);
        run();
    }
    if (failure) std::rethrow_exception(failure);
}

}  // namespace zrsheet
