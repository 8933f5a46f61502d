// A tree of instances that can be walked and watched.

#pragma once

#include <functional>
#include <mutex>
#include <optional>
#include <vector>

#include "dom/ObserverList.h"
#include "du/SmartPtr.h"
#include "zrk/object/Object.h"
#include "zrk/tree/BaseInstanceVisitor.h"
#include "zrk/tree/Instance.h"
#include "zrk/tree/TreeObserver.h"

namespace zrk {

class Operation;

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

    /// A property of a node of this tree, or of another structure over it.
    struct PropertyEdit {
        du::SmartPtr<BaseInstance> instance;
        du::Symbol group;
        du::Symbol name;
        std::optional<du::Symbol> value;  // empty: the node has no such property any more
    };
    /// Makes the edits in order, in one update, and adds one step to the operation (may be null). A tree is
    /// in no scene: pass the operation of the open transaction. Observers get null for nodes of another
    /// structure.
    void EditProperties(const std::vector<PropertyEdit>& edits, const du::SmartPtr<Operation>& operation);

    /// Changes a property and tells the observers. Requires: between BeginUpdate and EndUpdate.
    void ChangeProperty(const du::SmartPtr<Instance>& instance, const du::Symbol& group,
                        const du::Symbol& name, const du::Symbol& value);
    /// Frames changes that belong together.
    void BeginUpdate();
    void EndUpdate();

protected:
    void Register(const du::SmartPtr<TreeObserver>& observer) { m_observers.Register(observer); }

private:
    void Apply(const std::vector<PropertyEdit>& edits);

    dom::ObserverList<TreeObserver> m_observers;
    mutable std::mutex m_mutex;  // guards m_root
    du::SmartPtr<Instance> m_root;
};

}  // namespace zrk
