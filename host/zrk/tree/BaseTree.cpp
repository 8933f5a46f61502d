#include "zrk/tree/BaseTree.h"

#include <vector>

#include "zrk/object/Checked.h"
#include "zrk/operation/CallStep.h"
#include "zrk/operation/Operation.h"

namespace zrk {

BaseTree::BaseTree() = default;

BaseTree::~BaseTree() {
    for (const auto& observer : m_observers.Snapshot()) observer->OnDestroy();
}

void BaseTree::UnregisterObserver(const du::SmartPtr<TreeObserver>& observer) {
    m_observers.Unregister(observer);
}

void BaseTree::SetRoot(const du::SmartPtr<Instance>& root) {
    BeginUpdate();
    {
        du::SmartPtr<Instance> released = root;
        const std::lock_guard hold(m_mutex);
        std::swap(released, m_root);
    }
    if (root) m_observers.NotifyAll([&](TreeObserver& observer) { observer.OnInstanceInserted(root); });
    EndUpdate();
}

du::SmartPtr<Instance> BaseTree::GetRoot() const {
    const std::lock_guard hold(m_mutex);
    return m_root;
}

void BaseTree::Visit(BaseInstanceVisitor& visitor, VisitType) {
    const auto root = GetRoot();
    if (!root) return;
    std::vector<du::SmartPtr<Instance>> pending{root};
    while (!pending.empty()) {
        const du::SmartPtr<Instance> instance = std::move(pending.back());
        pending.pop_back();
        if (!visitor.Visit(instance)) return;
        const auto& children = instance->GetChildren();
        pending.insert(pending.end(), children.rbegin(), children.rend());
    }
}

void BaseTree::Apply(const std::vector<PropertyEdit>& edits) {
    BeginUpdate();
    for (const auto& [instance, group, name, value] : edits) {
        if (value) {
            instance->SetProperty(group, name, *value);
        } else {
            instance->RemoveProperty(group, name);
        }
        const auto shown = du::DynamicCast<Instance>(instance);
        m_observers.NotifyAll(
            [&](TreeObserver& observer) { observer.OnInstancePropertyValueChanged(shown); });
    }
    EndUpdate();
}

void BaseTree::EditProperties(const std::vector<PropertyEdit>& edits,
                              const du::SmartPtr<Operation>& operation) {
    std::vector<PropertyEdit> undo;
    for (const auto& edit : edits) {
        const auto properties = edit.instance->GetProperties();
        const auto entry = properties.find({edit.group, edit.name, du::Symbol::EMPTY});
        undo.push_back(edit);
        undo.back().value = entry != properties.end() ? std::optional(entry->second) : std::nullopt;
    }
    Apply(edits);
    if (!operation) return;
    const du::SmartPtr<BaseTree> self(this);
    operation->AddStep(
        Checked(new CallStep([self, undo] { self->Apply(undo); }, [self, edits] { self->Apply(edits); })));
}

void BaseTree::ChangeProperty(const du::SmartPtr<Instance>& instance, const du::Symbol& group,
                              const du::Symbol& name, const du::Symbol& value) {
    instance->SetProperty(group, name, value);
    m_observers.NotifyAll([&](TreeObserver& observer) { observer.OnInstancePropertyValueChanged(instance); });
}

void BaseTree::BeginUpdate() {
    m_observers.NotifyAll([](TreeObserver& observer) {
        if (observer.RequiresBeginEnd()) observer.OnBeginUpdate();
    });
}

void BaseTree::EndUpdate() {
    m_observers.NotifyAll([](TreeObserver& observer) {
        if (observer.RequiresBeginEnd()) observer.OnEndUpdate();
    });
}

}  // namespace zrk
