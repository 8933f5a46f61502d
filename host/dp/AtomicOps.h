// Atomic helpers for the counters of plain fields.

#pragma once

#include <atomic>

namespace dp {

class AtomicOps {
public:
    static int Increment(int& value) { return std::atomic_ref<int>(value).fetch_add(1) + 1; }
    static int Decrement(int& value) { return std::atomic_ref<int>(value).fetch_sub(1) - 1; }

protected:
    AtomicOps() = default;
    ~AtomicOps() = default;
};

}  // namespace dp
