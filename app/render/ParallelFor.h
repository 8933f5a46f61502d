// Spreads independent pieces of work over threads.

#pragma once

#include <cstddef>
#include <functional>

namespace zrsheet {

/// Calls `work` once for each number below `count`, on up to `threads` threads, and returns when all are
/// done. Throws the first exception that a call threw; pieces not yet begun are then left out. Requires: at
/// least one thread.
void ParallelFor(std::size_t count, unsigned threads, const std::function<void(std::size_t)>& work);

}  // namespace zrsheet
