#include "zritemlist/ItemStep.h"

#include <utility>

namespace zritemlist {

ItemStep::ItemStep(du::SmartPtr<zrk::illustration::ItemsList> items, unsigned id,
                   zrk::illustration::ItemsList::Item item, Change change)
    : m_items(std::move(items)), m_id(id), m_item(std::move(item)), m_change(change) {}

ItemStep::~ItemStep() = default;

void ItemStep::Apply(bool add) {
    if (add) {
        m_items->Restore(m_id, m_item);
        return;
    }
    if (auto item = m_items->Capture(m_id)) m_item = std::move(*item);
    m_items->RemoveItem(m_id);
}

}  // namespace zritemlist
