#include "zrk/event/BaseAsyncEvent.h"

#include "du/SmartPtr.h"

namespace zrk {

BaseAsyncEvent::~BaseAsyncEvent() = default;

void BaseAsyncEvent::Complete(int status) {
    if (m_isCompleted.exchange(true, std::memory_order_acq_rel)) return;
    // The manager's reference may be the last one.
    const du::SmartPtr<BaseAsyncEvent> self(this);
    OnComplete(status);
    OnStatus(status);
    LeaveManager();
}

}  // namespace zrk
