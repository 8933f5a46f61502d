#include "zrk/annotation/AnnoSetTable.h"

#include "zrk/annotation/AnnoSet.h"

namespace zrk {

AnnoSetTable::AnnoSetTable() = default;

AnnoSetTable::~AnnoSetTable() = default;

void AnnoSetTable::BeginUpdate() {
    m_observers.NotifyAll([](AnnoSetTableObserver& observer) { observer.OnBeginUpdate(); });
}

void AnnoSetTable::EndUpdate() {
    m_observers.NotifyAll([](AnnoSetTableObserver& observer) { observer.OnEndUpdate(); });
}

void AnnoSetTable::NotifyAdded(const du::SmartPtr<AnnoSet>& set) {
    m_observers.NotifyAll([&](AnnoSetTableObserver& observer) { observer.OnAnnoSetAdded(set); });
}

void AnnoSetTable::NotifyRemoved(const du::SmartPtr<AnnoSet>& set) {
    m_observers.NotifyAll([&](AnnoSetTableObserver& observer) { observer.OnAnnoSetRemoved(set); });
}

void AnnoSetTable::NotifyChanged(const du::SmartPtr<AnnoSet>& set) {
    m_observers.NotifyAll([&](AnnoSetTableObserver& observer) { observer.OnAnnoSetChanged(set); });
}

}  // namespace zrk
