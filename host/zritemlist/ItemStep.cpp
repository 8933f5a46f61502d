#include "zritemlist/ItemStep.h"

namespace zritemlist {

ItemStep::ItemStep(du::SmartPtr<zrk::illustration::ItemsList> items, std::vector<Change> changes)
    : m_items(std::move(items)), m_changes(std::move(changes)) {}

ItemStep::~ItemStep() = default;

// What the items no longer hold is let go first: an instance, or a number, that goes from one item to another
// has to be free when it arrives.
void ItemStep::Apply(State from, State to) {
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
}

}  // namespace zritemlist
