#include "callouts/observers/EngineHandle.h"

#include "callouts/Callouts.h"

namespace zrcallouts {

du::SmartPtr<Callouts> EngineHandle::Lock() const {
    const std::lock_guard hold(m_mutex);
    // An engine whose count has fallen to zero is about to be freed and must not be taken up again.
    if (m_engine == nullptr || !m_engine->TryAddReference(this)) return nullptr;
    du::SmartPtr<Callouts> engine(m_engine);
    m_engine->RemoveReference(this);
    return engine;
}

void EngineHandle::Close() {
    const std::lock_guard hold(m_mutex);
    m_engine = nullptr;
}

du::SmartPtr<Callouts> EngineLink::Lock() const {
    return IsDetached() ? du::SmartPtr<Callouts>() : m_handle->Lock();
}

}  // namespace zrcallouts
