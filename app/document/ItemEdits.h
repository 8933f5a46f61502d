// What the user does to the parts list, with the callouts following under the same transaction.

#pragma once

#include <string>
#include <vector>

#include "callouts/Callouts.h"
#include "zritemlist/ItemList.h"

namespace zrsheet {

/// Edits of the list of one scene with the scene's engine. Requires: a transaction of the scene is open.
class ItemEdits {
public:
    using SbomPtr = zritemlist::ItemList::SbomPtr;

    /// Both outlive this.
    ItemEdits(zritemlist::ItemList& list, zrcallouts::Callouts& engine) : m_list(list), m_engine(engine) {}

    /// The item goes, its callouts first, and with a kit its contents; a combined callout only loses it, and
    /// dissolves when one is left.
    void Delete(unsigned id);
    /// All items go, and every callout that has one.
    void Clear();
    /// Throws UserError when an item has the label, or when it is none for a list. "" is free always.
    void ExpectFree(const std::string& label) const;
    /// What the item is called from now on, in the list and by all its callouts; "" gives it a number, its
    /// former one where numbers were not given anew. Throws UserError as ExpectFree does.
    void Relabel(unsigned id, const std::string& label);
    /// The instances leave the items that hold them and join this one; the item's callout gains leaders to
    /// them, those of the items they left lose theirs as with Leave.
    void Join(unsigned id, const std::vector<SbomPtr>& instances);
    /// The instances leave the item; its callout loses its leaders to them, and goes when it has none left.
    void Leave(unsigned id, const std::vector<SbomPtr>& instances);

    /// The assemblies are welds from now on: each is counted, ordered and called out as one part. Their parts
    /// leave the list; equal assemblies share an item.
    void Weld(const std::vector<SbomPtr>& assemblies);
    /// They are assemblies again, and their parts are listed: with equal ones where the list is flat.
    void Unweld(const std::vector<SbomPtr>& welds);

    /// Each of the assemblies, and all that are equal to it, is a kit from now on (see Kits.h). Throws
    /// UserError for one in a kit or weld.
    void MakeKits(const std::vector<SbomPtr>& assemblies);
    /// They and their equals are no kits any more; their parts are listed again: with equal ones where the
    /// list is flat, else with whatever is missing in the product.
    void Unpack(const std::vector<SbomPtr>& kits);

private:
    zritemlist::ItemList::OperationPtr OpenOperation() const;
    void SetWeld(const SbomPtr& assembly, bool isWeld);
    void LeaveOrDelete(const SbomPtr& instance);
    void List(const SbomPtr& instance);
    /// The item of equal parts; false when there is none.
    bool FindEqual(const SbomPtr& instance, unsigned& id) const;
    /// Below the assembly, by itself or, where the list is hierarchical, with its own item.
    void ListBelow(const SbomPtr& assembly);
    void ListContents(const std::vector<SbomPtr>& kits);
    void RemoveLeaderless(unsigned id);

    zritemlist::ItemList& m_list;
    zrcallouts::Callouts& m_engine;
};

}  // namespace zrsheet
