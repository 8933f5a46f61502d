// Which instances of a product structure make one item of the parts list.

#pragma once

#include <map>
#include <unordered_map>
#include <utility>
#include <vector>

#include "du/SmartPtr.h"
#include "zrk/illustration/SbomInstance.h"

namespace zritemlist {

/// One walk over the structure, parents first. Not synchronised.
class StructureItems {
public:
    using SbomPtr = du::SmartPtr<zrk::illustration::SbomInstance>;
    using Group = std::vector<SbomPtr>;

    /// The root itself is the product and no item. Hierarchical: sub-assemblies make items too.
    StructureItems(const SbomPtr& root, bool hierarchical);

    /// In the order in which their first instances stand in the structure.
    const std::vector<Group>& GetGroups() const { return m_groups; }

private:
    /// The group of the assembly above, and what equal parts have in common.
    using Key = std::pair<std::size_t, const void*>;

    std::size_t Enter(const SbomPtr& instance, std::size_t above);

    std::vector<Group> m_groups;
    std::map<Key, std::size_t> m_groupOf;
};

}  // namespace zritemlist
