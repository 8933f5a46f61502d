// The parts list of a scene, with every change undoable.

#pragma once

#include <string>

#include "du/RefCounted.h"
#include "du/SmartPtr.h"
#include "zrk/illustration/ItemsList.h"
#include "zrk/illustration/SbomInstance.h"
#include "zrk/operation/Operation.h"
#include "zrk/scene/ShapeScene.h"

namespace zritemlist {

/// Any thread. Operations may be null: the change can then not be undone.
class ItemList : public virtual du::RefCounted {
public:
    using SbomPtr = du::SmartPtr<zrk::illustration::SbomInstance>;

    ~ItemList() override;

    /// Made when an illustration scene's list is first asked for; null for other scenes. O(1).
    static du::SmartPtr<ItemList> GetItemListForScene(const du::SmartPtr<zrk::ShapeScene>& scene);
    /// The scene and its list part; the list itself stays as it is.
    static void RemoveItemListForScene(const du::SmartPtr<zrk::ShapeScene>& scene);

    const du::SmartPtr<zrk::illustration::ItemsList>& GetZrkItemList() const { return m_items; }

    /// The item that holds the instance already, or a new one. An empty label gives the next number; `manual`
    /// marks what was entered by hand.
    unsigned AddInstance(const SbomPtr& instance, const du::SmartPtr<zrk::Operation>& operation, bool manual,
                         const std::string& label);
    bool GetItemLabel(unsigned id, std::string& label, bool& isCustom) const;
    /// The item of an equal part; false, and `id` untouched, when there is none.
    bool GetMatchingItem(const SbomPtr& instance, unsigned& id) const;
    /// An empty operation is made first.
    void DeleteItem(unsigned id, du::SmartPtr<zrk::Operation>& operation);

    /// One item for all instances of a part. With hierarchical numbering sub-assemblies get items too, and
    /// parts are told apart by the item they are below. Items that are there already stay. O(instances).
    void GenerateFromStructure(const SbomPtr& root, const du::SmartPtr<zrk::Operation>& operation);

private:
    explicit ItemList(const du::SmartPtr<zrk::ShapeScene>& scene);

    const std::weak_ptr<du::BackLink<zrk::Scene>> m_scene;  // a list does not keep its scene
    const du::SmartPtr<zrk::illustration::ItemsList> m_items;
};

}  // namespace zritemlist
