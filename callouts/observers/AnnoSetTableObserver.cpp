#include "callouts/observers/AnnoSetTableObserver.h"

#include "callouts/Callouts.h"

namespace zrcallouts {

AnnoSetTableObserver::~AnnoSetTableObserver() = default;

void AnnoSetTableObserver::OnEndUpdate() {
    const bool changed = m_changed.exchange(false);
    if (!changed) return;
    if (const auto engine = m_owner.Lock()) engine->RegenerateCalloutLabels();
}

}  // namespace zrcallouts
