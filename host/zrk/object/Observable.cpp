#include "zrk/object/Observable.h"

namespace zrk {

Observable::~Observable() = default;

Observable::UpdateGroup::UpdateGroup(const du::SmartPtr<Observable>& observable) : m_observable(observable) {
    if (m_observable) m_observable->OpenGroup();
}

Observable::UpdateGroup::~UpdateGroup() {
    if (m_observable) m_observable->CloseGroup();
}

void Observable::Notify(const EventKey& key, std::function<void()> deliver) {
    {
        const std::lock_guard hold(m_groupMutex);
        if (m_openGroups > 0) {
            if (m_waitingKeys.insert(key).second) m_waiting.push_back(std::move(deliver));
            return;
        }
    }
    NotifyBeginUpdate();
    deliver();
    NotifyEndUpdate();
}

void Observable::OpenGroup() {
    const std::lock_guard hold(m_groupMutex);
    ++m_openGroups;
}

void Observable::CloseGroup() {
    std::vector<std::function<void()>> waiting;
    {
        const std::lock_guard hold(m_groupMutex);
        if (--m_openGroups > 0) return;
        waiting.swap(m_waiting);
        m_waitingKeys.clear();
    }
    if (waiting.empty()) return;
    NotifyBeginUpdate();
    for (const auto& deliver : waiting) deliver();
    NotifyEndUpdate();
}

}  // namespace zrk
