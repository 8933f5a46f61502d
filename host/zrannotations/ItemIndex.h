// Which callouts carry which item of the parts list.

#pragma once

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
    ItemIndex();
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

    mutable std::mutex m_mutex;  // guards all below
    /// How many members carry the item, for a combined callout. Below zero for a moment where one thread
    /// takes away what another is about to add. One flat table: nearly every item has one carrier.
    std::map<std::pair<unsigned, du::SmartPtr<Callout>>, int> m_carriers;
    bool m_isClosed = false;
};

}  // namespace zrannotations
