#include "app/document/ItemEdits.h"

#include <map>
#include <set>

#include "app/document/UserError.h"
#include "zrk/operation/CallStep.h"

namespace zrsheet {
namespace {

/// All below it, parents before their children.
std::vector<ItemEdits::SbomPtr> Below(const ItemEdits::SbomPtr& assembly) {
    std::vector<ItemEdits::SbomPtr> below(assembly->GetChildren().begin(), assembly->GetChildren().end());
    for (std::size_t i = 0; i < below.size(); ++i) {
        const auto children = below[i]->GetChildren();
        below.insert(below.end(), children.begin(), children.end());
    }
    return below;
}

}  // namespace

// The engine follows the list by itself where it can, but combined callouts let a member go only while the
// item is still known.
void ItemEdits::Delete(unsigned id) {
    zritemlist::ItemList::OperationPtr operation = OpenOperation();
    m_engine.OnItemRemoved(id, operation);
    m_list.DeleteItem(id, operation);
}

void ItemEdits::Clear() {
    const auto operation = OpenOperation();
    m_engine.OnListCleared(operation);
    m_list.Clear(operation);
}

void ItemEdits::ExpectFree(const std::string& label) const {
    if (label.find("{line}") != std::string::npos)
        throw UserError("a label of the list has one line; templates and 'label set' may have {line}");
    const auto& items = m_list.GetZrkItemList();
    for (const unsigned id : items->GetItemIds()) {
        std::string other;
        bool isCustom = false;
        items->GetLabel(id, other, isCustom);
        if (!label.empty() && other == label)
            throw UserError("there is an item '" + label + "' already; choose another label");
    }
}

void ItemEdits::Relabel(unsigned id, const std::string& label) {
    std::string before;
    bool isCustom = false;
    m_list.GetItemLabel(id, before, isCustom);
    if (label != before) ExpectFree(label);
    m_list.SetLabel(id, label, OpenOperation());
}

void ItemEdits::Join(unsigned id, const std::vector<SbomPtr>& instances) {
    const auto operation = OpenOperation();
    std::map<unsigned, zrcallouts::Callouts::SbomSet> left;
    for (const auto& instance : instances) {
        unsigned holder = id;
        const auto& items = m_list.GetZrkItemList();
        if (items->GetItemIdForInstance(instance, holder) && holder != id) left[holder].insert(instance);
    }
    m_list.JoinItem(id, instances, operation);
    for (const auto& [holder, went] : left) {
        m_engine.UpdateItemGroupCalloutLeaders(holder, {}, went, operation);
        RemoveLeaderless(holder);
    }
    m_engine.UpdateItemGroupCalloutLeaders(id, {instances.begin(), instances.end()}, {}, operation);
}

void ItemEdits::Leave(unsigned id, const std::vector<SbomPtr>& instances) {
    const auto operation = OpenOperation();
    m_list.LeaveItem(id, instances, operation);
    m_engine.UpdateItemGroupCalloutLeaders(id, {}, {instances.begin(), instances.end()}, operation);
    RemoveLeaderless(id);
}

void ItemEdits::SetWeld(const SbomPtr& assembly, bool isWeld) {
    assembly->SetWeld(isWeld);
    OpenOperation()->AddStep(new zrk::CallStep([assembly, isWeld] { assembly->SetWeld(!isWeld); },
                                               [assembly, isWeld] { assembly->SetWeld(isWeld); }));
}

void ItemEdits::LeaveOrDelete(const SbomPtr& instance) {
    unsigned id = 0;
    const auto& items = m_list.GetZrkItemList();
    if (!items->GetItemIdForInstance(instance, id)) return;
    if (items->GetQuantity(id) == 1) {
        Delete(id);
    } else {
        Leave(id, {instance});
    }
}

// With its equals where they are listed already.
void ItemEdits::List(const SbomPtr& instance) {
    unsigned id = 0;
    if (m_list.GetZrkItemList()->GetItemIdForInstance(instance, id)) return;
    if (m_list.GetMatchingItem(instance, id)) {
        Join(id, {instance});
    } else {
        m_list.AddInstance(instance, OpenOperation(), false, "");
    }
}

void ItemEdits::Weld(const std::vector<SbomPtr>& assemblies) {
    for (const SbomPtr& assembly : assemblies) {
        if (assembly->IsWeld()) continue;
        for (const SbomPtr& part : Below(assembly)) LeaveOrDelete(part);
        SetWeld(assembly, true);
        List(assembly);
    }
}

void ItemEdits::Unweld(const std::vector<SbomPtr>& welds) {
    zritemlist::ItemList::Numbering numbering;
    m_list.GetZrkItemList()->GetNumberingSettings(numbering);
    for (const SbomPtr& weld : welds) {
        if (!weld->IsWeld()) continue;
        SetWeld(weld, false);
        if (numbering.hierarchical) {
            m_list.GenerateFromStructure(weld, OpenOperation());
            continue;
        }
        LeaveOrDelete(weld);
        for (const SbomPtr& part : Below(weld)) {
            if (!part->HasChildren()) List(part);
        }
    }
}

void ItemEdits::RemoveLeaderless(unsigned id) {
    std::vector<du::SmartPtr<zrannotations::Callout>> callouts;
    m_engine.GetItemIdCallouts(id, callouts);
    for (const auto& callout : callouts) {
        const bool leads =
            callout->GetType() == zrannotations::CALLOUT_TYPE_FREE || callout->GetLeaderLineCount(true) > 0;
        if (!leads) m_engine.GetAnnoSet()->RemoveAnnotationFromSet(callout, OpenOperation());
    }
}

zritemlist::ItemList::OperationPtr ItemEdits::OpenOperation() const {
    const auto scene = m_engine.GetScene();
    return scene ? scene->GetHistory().GetOpenOperation() : zritemlist::ItemList::OperationPtr();
}

}  // namespace zrsheet
