// Which callouts carry which item of the parts list.

#pragma once

#include <map>
#include <mutex>
#include <unordered_map>
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
    /// O(1).
    bool IsUsed(unsigned id) const;
    /// In the order of their addresses.
    std::vector<du::SmartPtr<Callout>> Find(unsigned id) const;
    /// Empty from now on.
    void Close();

private:
    /// How many members carry it, for a combined callout. Below zero for a moment where one thread takes away
    /// what another is about to add.
    using Carriers = std::map<du::SmartPtr<Callout>, int>;

    void Count(unsigned id, const du::SmartPtr<Callout>& carrier, int change);

    mutable std::mutex m_mutex;  // guards all below
    std::unordered_map<unsigned, Carriers> m_carriers;
    bool m_isClosed = false;
};

}  // namespace zrannotations
