// A tree of instances that can be walked and watched.

#pragma once

#include <functional>
#include <mutex>

#include "dom/ObserverList.h"
#include "du/SmartPtr.h"
#include "zrk/object/Object.h"
#include "zrk/tree/BaseInstanceVisitor.h"
#include "zrk/tree/Instance.h"
#include "zrk/tree/TreeObserver.h"

namespace zrk {

/// Any thread.
class BaseTree : public Object {
public:
    /// 0: every instance, parents before their children, children in order.
    using VisitType = int;

    BaseTree();
    /// The observers that are still registered hear of the end.
    ~BaseTree() override;

    void UnregisterObserver(const du::SmartPtr<TreeObserver>& observer);
    /// Walks until the visitor answers false. O(instances).
    void Visit(BaseInstanceVisitor& visitor, VisitType type);

    /// Shows a finished structure to the application.
    void SetRoot(const du::SmartPtr<Instance>& root);
    du::SmartPtr<Instance> GetRoot() const;

    /// Changes a property and tells the observers. Requires: between BeginUpdate and EndUpdate.
    void ChangeProperty(const du::SmartPtr<Instance>& instance, const du::Symbol& group,
                        const du::Symbol& name, const du::Symbol& value);
    /// Frames changes that belong together.
    void BeginUpdate();
    void EndUpdate();

protected:
    void Register(const du::SmartPtr<TreeObserver>& observer) { m_observers.Register(observer); }

private:
    dom::ObserverList<TreeObserver> m_observers;
    mutable std::mutex m_mutex;  // guards m_root
    du::SmartPtr<Instance> m_root;
};

}  // namespace zrk
