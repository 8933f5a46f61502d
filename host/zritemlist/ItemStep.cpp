#include "zritemlist/ItemStep.h"

#include <utility>

namespace zritemlist {
namespace {

ItemStep::Lasts LastsNow(const zrk::illustration::ItemsList& items, const ItemStep::Lasts& levels) {
    ItemStep::Lasts lasts;
    for (const auto& [parent, last] : levels) lasts.emplace(parent, items.GetLastNumber(parent));
    return lasts;
}

}  // namespace

ItemStep::ItemStep(du::SmartPtr<zrk::illustration::ItemsList> items, std::vector<Change> changes,
                   Lasts before)
    : m_items(std::move(items)),
      m_changes(std::move(changes)),
      m_before(std::move(before)),
      m_after(LastsNow(*m_items, m_before)) {}

ItemStep::~ItemStep() = default;

// What the items no longer hold is let go first: an instance, or a number, that goes from one item to another
// has to be free when it arrives.
void ItemStep::Apply(State from, State to, const Lasts& lasts) {
    const zrk::Observable::UpdateGroup group{du::SmartPtr<zrk::Observable>(m_items)};
    for (const Change& change : m_changes) {
        if (!(change.*to)) {
            m_items->RemoveItem(change.id);
        } else if (change.*from) {
            auto bare = *(change.*to);
            bare.instances.clear();
            bare.number = 0;
            m_items->Assign(change.id, bare);
        }
    }
    for (const Change& change : m_changes) {
        if (change.*to) m_items->Assign(change.id, change.*to);
    }
    for (const auto& [parent, last] : lasts) m_items->SetLastNumber(parent, last);
}

}  // namespace zritemlist
