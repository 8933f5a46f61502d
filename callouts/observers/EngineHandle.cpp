#include "callouts/observers/EngineHandle.h"

#include "callouts/Callouts.h"

namespace zrcallouts {

du::SmartPtr<Callouts> EngineLink::Lock() const {
    return IsDetached() ? du::SmartPtr<Callouts>() : m_handle->Lock();
}

}  // namespace zrcallouts
