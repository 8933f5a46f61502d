// Walks over selected parts the way callouts are made for them: welds stand for their members, parents for
// parts that are not listed themselves, assemblies for the listed parts below.

#pragma once

#include <functional>
#include <set>
#include <vector>

#include "du/SmartPtr.h"
#include "zrk/illustration/ItemsList.h"
#include "zrk/illustration/SbomInstance.h"
#include "zrk/illustration/SbomInstanceSelectionItem.h"
#include "zrk/tree/Instance.h"

namespace zrcallouts {

class SelectionWalk {
public:
    using SbomPtr = du::SmartPtr<zrk::illustration::SbomInstance>;
    using SelectionItemPtr = du::SmartPtr<zrk::illustration::SbomInstanceSelectionItem>;
    using InstanceSet = zrk::illustration::SbomInstance::InstanceSet;
    /// Called with an instance and the engineering instances gathered for it; none for an assembly that is no
    /// weld.
    using Receiver = std::function<void(const SbomPtr&, const InstanceSet&)>;

    /// `items` may be null: nothing is listed then.
    explicit SelectionWalk(du::SmartPtr<zrk::illustration::ItemsList> items);

    /// What the selected instance stands for: its top weld, or its parent, or itself. Null for an empty item.
    SbomPtr Represent(const SelectionItemPtr& item) const;
    /// Whether the instance's own item is not itemized while its parent's is.
    bool UseParent(const SbomPtr& instance) const;
    /// Hands over the instance and, before it, the listed parts below an assembly. O(instances visited).
    void Walk(const SbomPtr& instance, const Receiver& receive) const;

    /// The instances whose items count for `instance`: itself, and those of what was gathered; no members of
    /// welds.
    static std::set<SbomPtr> Candidates(const SbomPtr& instance, const InstanceSet& gathered);

private:
    bool IsListed(const SbomPtr& instance) const;

    du::SmartPtr<zrk::illustration::ItemsList> m_items;
};

}  // namespace zrcallouts
