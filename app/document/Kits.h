// Kits: assemblies that are ordered, numbered and called out as one, with what is in them listed below.
//
// A kit is an item that the author made of an assembly. Its contents are items of its parts that take no part
// in numbering; so neither needs a mark of its own in the list.

#pragma once

#include "zrk/illustration/ItemsList.h"

namespace zrsheet {

[[nodiscard]] bool IsKit(const zrk::illustration::ItemsList& items, unsigned id);

/// What stands for the part where callouts and numbers are concerned: its weld; the assembly above that takes
/// part in numbering where its own item does not, as in kits; else the part itself. Null for a part that
/// nothing stands for. O(depth).
[[nodiscard]] zrk::illustration::ItemsList::SbomPtr StandIn(
    const zrk::illustration::ItemsList& items, const zrk::illustration::ItemsList::SbomPtr& part);

/// Whether an assembly above the part is a kit. O(depth).
[[nodiscard]] bool IsInKit(const zrk::illustration::ItemsList& items,
                           const zrk::illustration::SbomInstance& part);

}  // namespace zrsheet
