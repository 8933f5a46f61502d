#include "zritemlist/ItemList.h"

#include <vector>

#include "du/Symbol.h"
#include "zritemlist/ItemStep.h"
#include "zritemlist/StructureItems.h"
#include "zrk/illustration/Illustration3dScene.h"

namespace zritemlist {
namespace {

const du::Symbol& SceneKey() {
    static const du::Symbol kKey("zritemlist::ItemList");
    return kKey;
}

constexpr const char* kDeleteItem = "Delete Item";

}  // namespace

ItemList::ItemList(const du::SmartPtr<zrk::ShapeScene>& scene)
    : m_scene(scene->GetLink()), m_items(new zrk::illustration::ItemsList) {}

ItemList::~ItemList() = default;

du::SmartPtr<ItemList> ItemList::GetItemListForScene(const du::SmartPtr<zrk::ShapeScene>& scene) {
    if (!du::DynamicCast<zrk::illustration::Illustration3dScene>(scene)) return nullptr;
    if (!scene->GetRefCountedUserData(SceneKey())) {
        // Of two threads that ask first, one list stays.
        scene->AddRefCountedUserData(SceneKey(), du::SmartPtr<du::RefCounted>(new ItemList(scene)));
    }
    return du::DynamicCast<ItemList>(scene->GetRefCountedUserData(SceneKey()));
}

void ItemList::RemoveItemListForScene(const du::SmartPtr<zrk::ShapeScene>& scene) {
    if (scene) scene->RemoveUserData(SceneKey());
}

unsigned ItemList::AddInstance(const SbomPtr& instance, const du::SmartPtr<zrk::Operation>& operation,
                               bool manual, const std::string& label) {
    unsigned id = 0;
    if (m_items->GetItemIdForInstance(instance, id)) return id;
    id = m_items->AddItem({instance}, label, true, manual);
    unsigned holder = id;
    if (m_items->GetItemIdForInstance(instance, holder) && holder != id) {
        // Another thread listed the instance in the meantime.
        m_items->RemoveItem(id);
        return holder;
    }
    if (operation) {
        operation->AddStep(new ItemStep(m_items, id, *m_items->Capture(id), ItemStep::Change::kAdded));
    }
    return id;
}

bool ItemList::GetItemLabel(unsigned id, std::string& label, bool& isCustom) const {
    return m_items->GetLabel(id, label, isCustom);
}

bool ItemList::GetMatchingItem(const SbomPtr& instance, unsigned& id) const {
    return instance && m_items->GetItemIdForComponent(instance->GetComponentNode(), id);
}

void ItemList::DeleteItem(unsigned id, du::SmartPtr<zrk::Operation>& operation) {
    auto item = m_items->Capture(id);
    if (!item) return;
    if (!operation) {
        const auto link = m_scene.lock();
        operation = new zrk::Operation(kDeleteItem, link ? link->Lock() : du::SmartPtr<zrk::Scene>(), true);
    }
    operation->AddStep(new ItemStep(m_items, id, std::move(*item), ItemStep::Change::kDeleted));
    m_items->RemoveItem(id);
}

void ItemList::GenerateFromStructure(const SbomPtr& root, const du::SmartPtr<zrk::Operation>& operation) {
    zrk::illustration::ItemsList::Numbering numbering;
    m_items->GetNumberingSettings(numbering);
    const StructureItems structure(root, numbering.hierarchical);
    const zrk::Observable::UpdateGroup group{du::SmartPtr<zrk::Observable>(m_items)};
    for (auto instances : structure.GetGroups()) {
        std::erase_if(instances, [this](const SbomPtr& instance) {
            unsigned listed = 0;
            return m_items->GetItemIdForInstance(instance, listed);
        });
        if (instances.empty()) continue;
        const unsigned id = m_items->AddItem(instances, "", true, false);
        if (operation) {
            operation->AddStep(new ItemStep(m_items, id, *m_items->Capture(id), ItemStep::Change::kAdded));
        }
    }
}

}  // namespace zritemlist
