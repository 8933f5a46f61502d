// The annotation sets that the application knows.

#pragma once

#include "dom/ObserverList.h"
#include "du/SmartPtr.h"
#include "zrk/annotation/AnnoSetTableObserver.h"
#include "zrk/object/Object.h"

namespace zrk {

/// Any thread. Changes are announced between BeginUpdate and EndUpdate.
class AnnoSetTable : public Object {
public:
    AnnoSetTable();
    ~AnnoSetTable() override;

    void RegisterObserver(const du::SmartPtr<AnnoSetTableObserver>& observer) {
        m_observers.Register(observer);
    }
    void UnregisterObserver(const du::SmartPtr<AnnoSetTableObserver>& observer) {
        m_observers.Unregister(observer);
    }

    void BeginUpdate();
    void EndUpdate();
    void NotifyAdded(const du::SmartPtr<AnnoSet>& set);
    void NotifyRemoved(const du::SmartPtr<AnnoSet>& set);
    void NotifyChanged(const du::SmartPtr<AnnoSet>& set);

private:
    dom::ObserverList<AnnoSetTableObserver> m_observers;
};

}  // namespace zrk
