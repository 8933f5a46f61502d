#include "callouts/observers/ItemsListObserver.h"

#include "callouts/Callouts.h"

namespace zrcallouts {

ItemsListObserver::~ItemsListObserver() = default;

void ItemsListObserver::OnItemRemoved(unsigned int itemId) {
    if (const auto engine = m_owner.Lock()) engine->OnItemRemoved(itemId, nullptr);
}

void ItemsListObserver::OnItemContentChanged(
    unsigned int itemId, const std::set<du::SmartPtr<zrk::illustration::SbomInstance>>& added,
    const std::set<du::SmartPtr<zrk::illustration::SbomInstance>>& removed) {
    if (const auto engine = m_owner.Lock()) engine->OnItemContentChanged(itemId, added, removed);
}

}  // namespace zrcallouts
