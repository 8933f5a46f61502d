#include "app/document/Kits.h"

namespace zrsheet {

bool IsKit(const zrk::illustration::ItemsList& items, unsigned id) {
    const auto item = items.Capture(id);
    if (!item || !item->isManual || !item->isItemized || item->instances.empty()) return false;
    const auto& first = *item->instances.front();
    return first.HasChildren() && !first.IsWeld();
}

zrk::illustration::ItemsList::SbomPtr StandIn(const zrk::illustration::ItemsList& items,
                                              const zrk::illustration::ItemsList::SbomPtr& part) {
    if (part->IsWeldMember()) return part->GetTopWeld();
    unsigned id = 0;
    if (!items.GetItemIdForInstance(part, id)) return part;
    zrk::illustration::ItemsList::SbomPtr candidate = part;
    while (candidate && !(items.GetItemIdForInstance(candidate, id) && items.GetItemized(id))) {
        zrk::illustration::ItemsList::SbomPtr above;
        candidate->GetParent(above);
        candidate = above;
    }
    return candidate;
}

bool IsInKit(const zrk::illustration::ItemsList& items, const zrk::illustration::SbomInstance& part) {
    zrk::illustration::ItemsList::SbomPtr above;
    part.GetParent(above);
    while (above) {
        unsigned id = 0;
        if (items.GetItemIdForInstance(above, id) && IsKit(items, id)) return true;
        zrk::illustration::ItemsList::SbomPtr next;
        above->GetParent(next);
        above = next;
    }
    return false;
}

}  // namespace zrsheet
