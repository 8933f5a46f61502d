#include "callouts/observers/CalloutTemplateObserver.h"

#include <mutex>

#include "callouts/Callouts.h"

namespace zrcallouts {

CalloutTemplateObserver::~CalloutTemplateObserver() = default;

int CalloutTemplateObserver::OnDestroy() {
    m_owner.Detach();
    const std::lock_guard hold(m_mutex);
    m_callout = nullptr;
    return 0;
}

du::SmartPtr<zrannotations::Callout> CalloutTemplateObserver::LockCallout() const {
    const std::lock_guard hold(m_mutex);
    // A callout whose count has fallen to zero is being freed.
    if (m_callout == nullptr || !m_callout->TryAddReference(this)) return nullptr;
    du::SmartPtr<zrannotations::Callout> callout(m_callout);
    m_callout->RemoveReference(this);
    return callout;
}

void CalloutTemplateObserver::OnTemplateModified() {
    auto callout = LockCallout();
    const auto engine = m_owner.Lock();
    if (!callout || !engine || !callout->IsValid()) return;
    engine->CheckForTypeUpdate(callout);
    const auto scene = callout->GetScene();
    if (!scene) return;
    engine->SetCalloutText(callout);
    if (const auto view = scene->GetView(0)) view->SetDirty(true);
}

}  // namespace zrcallouts
