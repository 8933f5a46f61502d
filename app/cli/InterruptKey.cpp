#include "app/cli/InterruptKey.h"

#include <atomic>

namespace zrsheet {
namespace {

std::atomic<bool> pressed = false;
static_assert(std::atomic<bool>::is_always_lock_free, "a signal may come while it is read");

void Remember(int) { pressed.store(true, std::memory_order_relaxed); }

}  // namespace

InterruptKey::InterruptKey() {
    pressed.store(false, std::memory_order_relaxed);
    struct sigaction action {};
    action.sa_handler = Remember;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigaction(SIGINT, &action, &m_former);
}

InterruptKey::~InterruptKey() { sigaction(SIGINT, &m_former, nullptr); }

bool InterruptKey::WasPressed() { return pressed.load(std::memory_order_relaxed); }

}  // namespace zrsheet
