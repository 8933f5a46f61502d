// The parts list: items with a label, a tag and the instances that they stand for.

#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "dom/ObserverList.h"
#include "du/SmartPtr.h"
#include "zrk/illustration/ItemNumbers.h"
#include "zrk/illustration/ItemsListObserver.h"
#include "zrk/illustration/Numbering.h"
#include "zrk/illustration/RankIndex.h"
#include "zrk/illustration/SbomInstance.h"
#include "zrk/object/Object.h"
#include "zrk/object/Observable.h"

namespace zrk::illustration {

/// Any thread; look-ups are O(1) or O(log n). Observers are told on the thread that made the change, with no
/// lock held, or when the outermost update group closes. Ids ascend in list order, start with 1 and are never
/// used again.
class ItemsList : public zrk::Object, public zrk::Observable {
public:
    using SbomPtr = du::SmartPtr<SbomInstance>;

    using Numbering = illustration::Numbering;

    /// How labels are written, the number of every item, and the last that was given on each level.
    struct Numbers {
        struct Place {
            unsigned number = 0;
            unsigned parent = 0;

            friend bool operator==(const Place&, const Place&) = default;
        };

        Numbering numbering;
        std::map<unsigned, Place> byItem;
        ItemNumbers::Lasts lasts;

        friend bool operator==(const Numbers&, const Numbers&) = default;
    };

    /// All of an item but its id. An item gets its number when it is made and keeps it, whatever goes before
    /// or after.
    struct Item {
        std::string customLabel;  // "" for one that is called by its number
        unsigned number = 0;      // among the items below the same parent; 0 for none
        unsigned parent = 0;      // the item of the next assembly above that has a label, 0 for none
        bool isItemized = true;
        bool isManual = false;  // entered by hand: stays when the list is made anew
        bool isLocked = false;  // keeps its number when numbers are given anew
        std::string tag;
        std::vector<SbomPtr> instances;

        friend bool operator==(const Item&, const Item&) = default;
    };

    ItemsList();
    /// Observers that are still registered hear of the end.
    ~ItemsList() override;

    void RegisterObserver(const du::SmartPtr<ItemsListObserver>& observer) { m_observers.Register(observer); }
    void UnregisterObserver(const du::SmartPtr<ItemsListObserver>& observer) {
        m_observers.Unregister(observer);
    }

    /// False, and `id` untouched, for an instance that no item holds.
    bool GetItemIdForInstance(const SbomPtr& instance, unsigned& id) const;
    /// The first item that holds an instance of the component.
    bool GetItemIdForComponent(const du::SmartPtr<zrk::ComponentNode>& component, unsigned& id) const;
    /// Whether the item takes part in numbering. Unknown ids: false.
    bool GetItemized(unsigned id) const;
    /// Unknown ids: false, outputs untouched.
    bool GetLabel(unsigned id, std::string& label, bool& isCustom) const;
    /// Unknown ids: 0.
    int GetQuantity(unsigned id) const;
    /// Unknown ids: "".
    std::string GetItemTag(unsigned id) const;
    void GetInstances(unsigned id, std::set<SbomPtr>& out) const;
    /// In the order in which they were added.
    std::vector<SbomPtr> GetOrderedInstances(unsigned id) const;
    /// How many items stand before it in the list.
    unsigned GetIndex(unsigned id) const;
    /// The indices of the items above it, the topmost first, then its own. O(depth x log n).
    std::vector<unsigned> GetHierarchyIndex(unsigned id) const;
    void GetNumberingSettings(Numbering& out) const;
    /// In list order.
    std::vector<unsigned> GetItemIds() const;

    /// Highlights the item in the list; no event. Of an item that is not there it is kept until it comes
    /// (back).
    void SetIndicated(unsigned id, bool indicated);
    bool IsIndicated(unsigned id) const;

    /// An empty label gives the item the next number. Instances that another item holds are left out.
    unsigned AddItem(const std::vector<SbomPtr>& instances, const std::string& label, bool itemized,
                     bool manual);
    bool RemoveItem(unsigned id);
    void AddInstance(unsigned id, const SbomPtr& instance);
    void RemoveInstance(unsigned id, const SbomPtr& instance);
    void SetLabel(unsigned id, const std::string& label);
    void SetItemized(unsigned id, bool itemized);
    void SetTag(unsigned id, const std::string& tag);
    /// A locked item keeps its number when numbers are given anew.
    void SetLocked(unsigned id, bool locked);
    /// How labels are written from now on; the numbers are given anew, in list order.
    void SetNumbering(const Numbering& numbering);
    /// Gives numbers anew: first to the items of `order`, then to the others in list order. Numbers of items
    /// that are gone are given again; those of locked items are stepped over.
    void Renumber(const std::vector<unsigned>& order);
    /// False when another item below the same parent has the number, or the item has none to change: it is
    /// not itemized, or has a label of its own.
    bool SetNumber(unsigned id, unsigned number);
    /// Removes everything but nothing else: the application lets its callouts follow.
    void Clear();

    /// Empty for unknown ids.
    std::optional<Item> Capture(unsigned id) const;
    /// Puts a captured item back under its id, which puts it back in its place.
    void Restore(unsigned id, const Item& item);
    /// Makes the item just so, adding or (empty) removing it if need be. A number or an instance that another
    /// item has taken meanwhile stays there.
    void Assign(unsigned id, const std::optional<Item>& item);
    /// The item of the next assembly above instances that are no item yet; 0 for none.
    unsigned GetParentItem(const std::vector<SbomPtr>& instances) const;
    /// The greatest number that was ever given below the item `parent`, on the top level for 0; 0 for none.
    unsigned GetLastNumber(unsigned parent) const;
    /// Numbers up to it count as given. Never below a number in use.
    void SetLastNumber(unsigned parent, unsigned last);
    Numbers CaptureNumbers() const;
    /// Items that are not in `numbers` keep theirs.
    void RestoreNumbers(const Numbers& numbers);

protected:
    void NotifyBeginUpdate() override;
    void NotifyEndUpdate() override;

private:
    struct ContentChange {
        std::set<SbomPtr> added;
        std::set<SbomPtr> removed;
    };

    // Called with m_mutex held.
    void Insert(unsigned id, Item item);
    void Take(unsigned id, const SbomPtr& instance);
    void Drop(unsigned id, const SbomPtr& instance);
    /// The level that the item is numbered on.
    unsigned LevelOf(const Item& item) const { return m_numbering.hierarchical ? item.parent : 0; }
    void GiveNumber(Item& item);
    void GiveNumbersAnew(const std::vector<unsigned>& order);
    /// The item keeps the number that it had, or gets the next one when another item has taken it meanwhile.
    void KeepNumber(Item& item);
    void FreeNumber(const Item& item);
    bool HasLabel(unsigned id) const;
    unsigned ParentItemOf(unsigned id, const Item& item) const;
    std::string LabelOf(const Item& item) const;

    void NotifyNumbering();
    /// Adds up what came and went until it is told.
    void NotifyContent(unsigned id, const std::set<SbomPtr>& added, const std::set<SbomPtr>& removed);
    template <class Change>
    void ChangeItem(unsigned id, Change change);

    dom::ObserverList<ItemsListObserver> m_observers;
    mutable std::mutex m_mutex;  // guards all below
    std::map<unsigned, Item> m_items;
    unsigned m_lastId = 0;
    RankIndex m_ranks;
    std::unordered_map<const SbomInstance*, unsigned> m_itemOfInstance;
    std::unordered_map<const zrk::ComponentNode*, std::map<unsigned, unsigned>>
        m_itemsOfComponent;  // id -> instances
    ItemNumbers m_numbers;
    std::unordered_set<unsigned> m_indicated;
    std::unordered_map<unsigned, ContentChange> m_untold;  // by item
    Numbering m_numbering;
};

}  // namespace zrk::illustration
