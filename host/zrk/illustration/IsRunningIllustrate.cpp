#include "zrk/illustration/IsRunningIllustrate.h"

#include <atomic>

namespace zrk::illustration {
namespace {

std::atomic<bool> isRunning{false};

}  // namespace

bool IsRunningIllustrate() { return isRunning.load(std::memory_order_relaxed); }

void SetRunningIllustrate(bool running) { isRunning.store(running, std::memory_order_relaxed); }

}  // namespace zrk::illustration
