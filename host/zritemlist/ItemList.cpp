#include "zritemlist/ItemList.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "du/Symbol.h"
#include "zritemlist/ItemStep.h"
#include "zritemlist/StructureItems.h"
#include "zrk/illustration/Illustration3dScene.h"
#include "zrk/object/Checked.h"
#include "zrk/operation/CallStep.h"

namespace zritemlist {
namespace {

const du::Symbol& SceneKey() {
    static const du::Symbol kKey("zritemlist::ItemList");
    return kKey;
}

constexpr const char* kDeleteItem = "Delete Item";

}  // namespace

ItemList::ItemList(const du::SmartPtr<zrk::ShapeScene>& scene)
    : m_scene(scene->GetLink()), m_items(zrk::Checked(new zrk::illustration::ItemsList)) {}

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

du::SmartPtr<zrk::Scene> ItemList::GetScene() const {
    const auto link = m_scene.lock();
    return link ? link->Lock() : du::SmartPtr<zrk::Scene>();
}

ItemList::OperationPtr ItemList::StepsGoTo(const OperationPtr& operation) const {
    const auto scene = zrk::History::IsAnyActive() ? GetScene() : du::SmartPtr<zrk::Scene>();
    return scene ? scene->GetHistory().GetOperationFor(operation) : operation;
}

// The step follows those of what the change sets off, such as the new items of an engine, and so is undone
// before them.
template <class Change>
void ItemList::ChangeItems(const std::vector<unsigned>& ids, const OperationPtr& operation, Change change) {
    const auto target = StepsGoTo(operation);
    std::vector<ItemStep::Change> changes;
    ItemStep::Lasts lasts;
    for (const unsigned id : target ? ids : std::vector<unsigned>()) {
        changes.push_back({id, m_items->Capture(id), {}});
        const unsigned parent = changes.back().before ? changes.back().before->parent : 0;
        lasts.emplace(parent, m_items->GetLastNumber(parent));
    }
    change();
    for (auto& entry : changes) entry.after = m_items->Capture(entry.id);
    std::erase_if(changes, [](const ItemStep::Change& entry) { return entry.before == entry.after; });
    if (!changes.empty())
        target->AddStep(zrk::Checked(new ItemStep(m_items, std::move(changes), std::move(lasts))));
}

unsigned ItemList::AddItem(const std::vector<SbomPtr>& instances, const std::string& label, bool itemized,
                           bool manual, const OperationPtr& operation) {
    const unsigned parent = m_items->GetParentItem(instances);
    const unsigned last = m_items->GetLastNumber(parent);
    const unsigned id = m_items->AddItem(instances, label, itemized, manual);
    RecordAdded(id, {{parent, last}}, operation);
    return id;
}

void ItemList::RecordAdded(unsigned id, const zrk::illustration::ItemNumbers::Lasts& lasts,
                           const OperationPtr& operation) {
    const auto target = StepsGoTo(operation);
    if (target)
        target->AddStep(
            zrk::Checked(new ItemStep(m_items, {{id, std::nullopt, m_items->Capture(id)}}, lasts)));
}

unsigned ItemList::AddInstance(const SbomPtr& instance, const OperationPtr& operation, bool manual,
                               const std::string& label) {
    unsigned id = 0;
    if (m_items->GetItemIdForInstance(instance, id)) return id;
    const unsigned parent = m_items->GetParentItem({instance});
    const unsigned last = m_items->GetLastNumber(parent);
    id = m_items->AddItem({instance}, label, true, manual);
    unsigned holder = id;
    if (m_items->GetItemIdForInstance(instance, holder) && holder != id) {
        // Another thread listed the instance in the meantime.
        m_items->RemoveItem(id);
        return holder;
    }
    RecordAdded(id, {{parent, last}}, operation);
    return id;
}

bool ItemList::GetItemLabel(unsigned id, std::string& label, bool& isCustom) const {
    return m_items->GetLabel(id, label, isCustom);
}

bool ItemList::GetMatchingItem(const SbomPtr& instance, unsigned& id) const {
    return instance && m_items->GetItemIdForComponent(instance->GetComponentNode(), id);
}

void ItemList::DeleteItem(unsigned id, OperationPtr& operation) {
    if (!m_items->Capture(id)) return;
    if (!operation) operation = zrk::Checked(new zrk::Operation(kDeleteItem, GetScene(), true));
    ChangeItems({id}, operation, [&] { m_items->RemoveItem(id); });
}

void ItemList::SetLabel(unsigned id, const std::string& label, const OperationPtr& operation) {
    ChangeItems({id}, operation, [&] { m_items->SetLabel(id, label); });
}

void ItemList::SetTag(unsigned id, const std::string& tag, const OperationPtr& operation) {
    ChangeItems({id}, operation, [&] { m_items->SetTag(id, tag); });
}

void ItemList::SetItemized(unsigned id, bool itemized, const OperationPtr& operation) {
    ChangeItems({id}, operation, [&] { m_items->SetItemized(id, itemized); });
}

bool ItemList::SetNumber(unsigned id, unsigned number, const OperationPtr& operation) {
    bool isSet = false;
    ChangeItems({id}, operation, [&] { isSet = m_items->SetNumber(id, number); });
    return isSet;
}

void ItemList::JoinItem(unsigned id, const std::vector<SbomPtr>& instances, const OperationPtr& operation) {
    if (!m_items->Capture(id)) return;
    std::vector<unsigned> ids{id};
    for (const auto& instance : instances) {
        unsigned holder = id;
        m_items->GetItemIdForInstance(instance, holder);
        if (std::find(ids.begin(), ids.end(), holder) == ids.end()) ids.push_back(holder);
    }
    ChangeItems(ids, operation, [&] {
        const zrk::Observable::UpdateGroup group{du::SmartPtr<zrk::Observable>(m_items)};
        for (const auto& instance : instances) {
            unsigned holder = id;
            if (m_items->GetItemIdForInstance(instance, holder) && holder != id) {
                m_items->RemoveInstance(holder, instance);
            }
            m_items->AddInstance(id, instance);
        }
    });
}

void ItemList::LeaveItem(unsigned id, const std::vector<SbomPtr>& instances, const OperationPtr& operation) {
    ChangeItems({id}, operation, [&] {
        const zrk::Observable::UpdateGroup group{du::SmartPtr<zrk::Observable>(m_items)};
        for (const auto& instance : instances) m_items->RemoveInstance(id, instance);
    });
}

void ItemList::SetLocked(unsigned id, bool locked, const OperationPtr& operation) {
    ChangeItems({id}, operation, [&] { m_items->SetLocked(id, locked); });
}

void ItemList::SetNumbering(const Numbering& numbering, const OperationPtr& operation) {
    ChangeNumbers(operation, [&] { m_items->SetNumbering(numbering); });
}

void ItemList::Renumber(const std::vector<unsigned>& order, const OperationPtr& operation) {
    ChangeNumbers(operation, [&] { m_items->Renumber(order); });
}

template <class Change>
void ItemList::ChangeNumbers(const OperationPtr& operation, Change change) {
    const auto before = m_items->CaptureNumbers();
    change();
    const auto after = m_items->CaptureNumbers();
    const auto target = StepsGoTo(operation);
    if (!target || before == after) return;
    target->AddStep(
        zrk::Checked(new zrk::CallStep([items = m_items, before] { items->RestoreNumbers(before); },
                                       [items = m_items, after] { items->RestoreNumbers(after); })));
}

void ItemList::Clear(const OperationPtr& operation) {
    ChangeItems(m_items->GetItemIds(), operation, [&] { m_items->Clear(); });
}

void ItemList::GenerateFromStructure(const SbomPtr& root, const OperationPtr& operation) {
    Numbering numbering;
    m_items->GetNumberingSettings(numbering);
    ListStructure(root, numbering.hierarchical, true, operation);
}

void ItemList::ListStructure(const SbomPtr& root, bool withAssemblies, bool itemized,
                             const OperationPtr& operation) {
    const StructureItems structure(root, withAssemblies);
    const zrk::Observable::UpdateGroup group{du::SmartPtr<zrk::Observable>(m_items)};
    for (auto instances : structure.GetGroups()) {
        std::erase_if(instances, [this](const SbomPtr& instance) {
            unsigned listed = 0;
            return m_items->GetItemIdForInstance(instance, listed);
        });
        if (!instances.empty()) AddItem(instances, "", itemized, false, operation);
    }
}

}  // namespace zritemlist
