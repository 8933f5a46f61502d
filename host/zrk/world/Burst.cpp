#include "zrk/world/Burst.h"

#include <utility>

namespace zrk {

thread_local Burst* Burst::t_current = nullptr;

void Burst::Note(const void* object, std::function<void()> tell) {
    if (t_current == nullptr) return tell();
    if (t_current->m_objects.insert(object).second) t_current->m_notes.push_back(std::move(tell));
}

std::size_t Burst::Tell() {
    m_objects.clear();
    const auto notes = std::exchange(m_notes, {});
    for (const auto& tell : notes) tell();
    return notes.size();
}

}  // namespace zrk
