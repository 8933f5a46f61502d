#include "callouts/observers/TreeObserver.h"

#include <utility>

#include "callouts/Callouts.h"
#include "zrk/world/World.h"

namespace zrcallouts {

TreeObserver::~TreeObserver() = default;

du::Symbol TreeObserver::GetObjectClass() const {
    static const du::Symbol kClass("zrcallouts::TreeObserver");
    return kClass;
}

void TreeObserver::Attach() {
    const auto world = zrk::World::GetWorld();
    if (!world || m_owner.IsDetached()) return;
    const auto tree = world->GetTree();
    if (!tree) return;
    {
        const std::lock_guard hold(m_mutex);
        m_tree = tree;
    }
    world->ManageObject(du::SmartPtr<dom::ManagedObject>(this));
    tree->RegisterObserver(du::SmartPtr<zrk::TreeObserver>(this), false);
}

du::SmartPtr<zrk::Tree> TreeObserver::GetTree() const {
    const std::lock_guard hold(m_mutex);
    return m_tree;
}

int TreeObserver::OnDestroy() {
    m_owner.Detach();
    du::SmartPtr<zrk::Tree> tree;
    const std::lock_guard hold(m_mutex);
    std::swap(tree, m_tree);
    return 0;
}

void TreeObserver::OnEndUpdate() {
    const bool changed = m_changed.exchange(false);
    if (!changed) return;
    if (const auto engine = m_owner.Lock()) engine->RegenerateCalloutLabels();
}

}  // namespace zrcallouts
