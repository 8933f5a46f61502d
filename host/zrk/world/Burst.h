// What is told once after many changes instead of after each of them.

#pragma once

#include <cstddef>
#include <functional>
#include <unordered_set>
#include <vector>

namespace zrk {

/// While one lives, its thread keeps notes, one for each object, until they are told; bursts nest. A callout
/// whose hundred leaders all got their ends is looked at once and not a hundred times. One thread.
class Burst {
public:
    Burst() : m_outer(t_current) { t_current = this; }
    ~Burst() { t_current = m_outer; }
    Burst(const Burst&) = delete;
    Burst& operator=(const Burst&) = delete;

    /// Tells at once when the thread is in no burst, and else later, if nothing about the object waits
    /// already. `tell` keeps the object alive. Amortised O(1).
    static void Note(const void* object, std::function<void()> tell);
    /// Tells what waits; returns how much that was. What that leads to waits in turn.
    std::size_t Tell();

private:
    static thread_local Burst* t_current;

    Burst* const m_outer;
    std::unordered_set<const void*> m_objects;
    std::vector<std::function<void()>> m_notes;
};

}  // namespace zrk
