// Which callouts carry which item of the parts list.

#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <utility>
#include <vector>

#include "du/SmartPtr.h"

namespace zrannotations {

class Callout;

/// Kept right by the callouts themselves (Callout::SetItemIndex); a combined callout carries the items of all
/// its members. Holds them counted. Any thread.
class ItemIndex {
public:
    /// Told of an item that has got its first carrier or lost its last, on the thread that made the change
    /// and with no lock held; by then another thread may have changed it again.
    using UseChanged = std::function<void(unsigned id)>;

    explicit ItemIndex(UseChanged onUseChanged = {});
    ItemIndex(const ItemIndex&) = delete;
    ItemIndex& operator=(const ItemIndex&) = delete;
    ~ItemIndex();

    void Add(unsigned id, const du::SmartPtr<Callout>& carrier) { Count(id, carrier, 1); }
    void Remove(unsigned id, const du::SmartPtr<Callout>& carrier) { Count(id, carrier, -1); }
    /// O(log callouts).
    bool IsUsed(unsigned id) const;
    /// In the order of their addresses.
    std::vector<du::SmartPtr<Callout>> Find(unsigned id) const;
    /// Empty from now on.
    void Close();

private:
    void Count(unsigned id, const du::SmartPtr<Callout>& carrier, int change);
    /// Whether the item got its first carrier or lost its last.
    bool Enter(unsigned id, const du::SmartPtr<Callout>& carrier, int change);

    /// Requires: the lock is held.
    bool IsCarried(unsigned id) const;

    const UseChanged m_onUseChanged;
    mutable std::mutex m_mutex;  // guards all below
    /// How many members carry the item, for a combined callout. Below zero for a moment where one thread
    /// takes away what another is about to add. One flat table: nearly every item has one carrier.
    std::map<std::pair<unsigned, du::SmartPtr<Callout>>, int> m_carriers;
    bool m_isClosed = false;
};

}  // namespace zrannotations
