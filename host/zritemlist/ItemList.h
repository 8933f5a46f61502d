// The parts list of a scene, with every change undoable.

#pragma once

#include <string>
#include <vector>

#include "du/RefCounted.h"
#include "du/SmartPtr.h"
#include "zrk/illustration/ItemsList.h"
#include "zrk/illustration/SbomInstance.h"
#include "zrk/operation/Operation.h"
#include "zrk/scene/ShapeScene.h"

namespace zritemlist {

/// Any thread. A change belongs to the scene's open transaction; where there is none it becomes a step of the
/// operation, and with a null operation it cannot be undone. Whoever edits the list for the user lets the
/// callouts follow under the same operation: before an item goes, before the list is cleared, and after
/// instances joined or left an item.
class ItemList : public virtual du::RefCounted {
public:
    using SbomPtr = du::SmartPtr<zrk::illustration::SbomInstance>;
    using OperationPtr = du::SmartPtr<zrk::Operation>;
    using Numbering = zrk::illustration::ItemsList::Numbering;

    ~ItemList() override;

    /// Made when an illustration scene's list is first asked for; null for other scenes. O(1).
    static du::SmartPtr<ItemList> GetItemListForScene(const du::SmartPtr<zrk::ShapeScene>& scene);
    /// The scene and its list part; the list itself stays as it is.
    static void RemoveItemListForScene(const du::SmartPtr<zrk::ShapeScene>& scene);

    const du::SmartPtr<zrk::illustration::ItemsList>& GetZrkItemList() const { return m_items; }

    /// The item that holds the instance already, or a new one. An empty label gives the next number; `manual`
    /// marks what was entered by hand.
    unsigned AddInstance(const SbomPtr& instance, const OperationPtr& operation, bool manual,
                         const std::string& label);
    bool GetItemLabel(unsigned id, std::string& label, bool& isCustom) const;
    /// The item of an equal part; false, and `id` untouched, when there is none.
    bool GetMatchingItem(const SbomPtr& instance, unsigned& id) const;
    /// An empty operation is made first.
    void DeleteItem(unsigned id, OperationPtr& operation);

    /// A new item; instances that another item holds are left out. There may be none.
    unsigned AddItem(const std::vector<SbomPtr>& instances, const std::string& label, bool itemized,
                     bool manual, const OperationPtr& operation);
    /// Unknown ids: nothing. An empty label gives the item the next number.
    void SetLabel(unsigned id, const std::string& label, const OperationPtr& operation);
    void SetTag(unsigned id, const std::string& tag, const OperationPtr& operation);
    void SetItemized(unsigned id, bool itemized, const OperationPtr& operation);
    /// False, and nothing changes, when the number is taken or the item is not numbered.
    bool SetNumber(unsigned id, unsigned number, const OperationPtr& operation);
    /// Instances leave the item that holds them, if any, for this one. O(instances of the items).
    void JoinItem(unsigned id, const std::vector<SbomPtr>& instances, const OperationPtr& operation);
    /// Instances that the item does not hold are passed over; the item stays, even empty.
    void LeaveItem(unsigned id, const std::vector<SbomPtr>& instances, const OperationPtr& operation);
    /// A locked item keeps its number when numbers are given anew.
    void SetLocked(unsigned id, bool locked, const OperationPtr& operation);
    /// How labels are written from now on; all numbers are given anew, in list order.
    void SetNumbering(const Numbering& numbering, const OperationPtr& operation);
    /// Gives numbers anew: first to the items of `order`, then to the others in list order. This closes the
    /// gaps.
    void Renumber(const std::vector<unsigned>& order, const OperationPtr& operation);
    void Clear(const OperationPtr& operation);

    /// One item for all instances of a part. With hierarchical numbering sub-assemblies get items too, and
    /// parts are told apart by the item they are below. Items that are there already stay. O(instances).
    void GenerateFromStructure(const SbomPtr& root, const OperationPtr& operation);
    /// The same with or without items for sub-assemblies, whatever the numbering; not `itemized`: the new
    /// items get no numbers yet.
    void ListStructure(const SbomPtr& root, bool withAssemblies, bool itemized,
                       const OperationPtr& operation);

private:
    using ItemsList = zrk::illustration::ItemsList;

    explicit ItemList(const du::SmartPtr<zrk::ShapeScene>& scene);

    du::SmartPtr<zrk::Scene> GetScene() const;
    /// Where a change puts its step; null when it is not undone.
    OperationPtr StepsGoTo(const OperationPtr& operation) const;
    /// Makes the change to the items and adds a step for all of them that are different afterwards.
    template <class Change>
    void ChangeItems(const std::vector<unsigned>& ids, const OperationPtr& operation, Change change);

    /// The same for a change of the numbers of all items.
    template <class Change>
    void ChangeNumbers(const OperationPtr& operation, Change change);
    /// `lasts`: of the item's level, before it came.
    void RecordAdded(unsigned id, const zrk::illustration::ItemNumbers::Lasts& lasts,
                     const OperationPtr& operation);

    const std::weak_ptr<du::BackLink<zrk::Scene>> m_scene;  // a list does not keep its scene
    const du::SmartPtr<ItemsList> m_items;
};

}  // namespace zritemlist
