#include "app/document/ItemEdits.h"

#include <map>
#include <set>

#include "app/document/Kits.h"
#include "app/document/UserError.h"
#include "zrk/object/Checked.h"
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

ItemEdits::SbomPtr RootOf(const ItemEdits::SbomPtr& instance) {
    ItemEdits::SbomPtr root = instance;
    for (ItemEdits::SbomPtr above = instance; above;) {
        root = above;
        ItemEdits::SbomPtr next;
        root->GetParent(next);
        above = next;
    }
    return root;
}

/// All of the product that are the same assembly, this one too, in the order of the structure.
std::vector<ItemEdits::SbomPtr> EqualTo(const ItemEdits::SbomPtr& assembly) {
    auto equal = Below(RootOf(assembly));
    std::erase_if(equal, [&assembly](const auto& each) {
        return each->GetComponentNode() != assembly->GetComponentNode();
    });
    return equal;
}

}  // namespace

// The engine follows the list by itself where it can, but combined callouts let a member go only while the
// item is still known.
void ItemEdits::Delete(unsigned id) {
    const auto& items = m_list.GetZrkItemList();
    const auto kits = IsKit(*items, id) ? items->GetOrderedInstances(id) : std::vector<SbomPtr>();
    for (const SbomPtr& kit : kits) {
        for (const SbomPtr& part : Below(kit)) LeaveOrDelete(part);
    }
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
    OpenOperation()->AddStep(
        zrk::Checked(new zrk::CallStep([assembly, isWeld] { assembly->SetWeld(!isWeld); },
                                       [assembly, isWeld] { assembly->SetWeld(isWeld); })));
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

// What is in kits stays in them.
bool ItemEdits::FindEqual(const SbomPtr& instance, unsigned& id) const {
    const auto& items = *m_list.GetZrkItemList();
    const auto isInKit = [&items](unsigned each) {
        const auto parts = items.GetOrderedInstances(each);
        return !parts.empty() && IsInKit(items, *parts.front());
    };
    if (!m_list.GetMatchingItem(instance, id)) return false;
    if (!isInKit(id)) return true;
    for (const unsigned each : items.GetItemIds()) {
        const auto parts = items.GetOrderedInstances(each);
        id = each;
        const bool isEqual =
            !parts.empty() && parts.front()->GetComponentNode() == instance->GetComponentNode();
        if (isEqual && !isInKit(each)) return true;
    }
    return false;
}

// With its equals where they are listed already.
void ItemEdits::List(const SbomPtr& instance) {
    unsigned id = 0;
    if (m_list.GetZrkItemList()->GetItemIdForInstance(instance, id)) return;
    if (FindEqual(instance, id)) {
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
    for (const SbomPtr& weld : welds) {
        if (!weld->IsWeld()) continue;
        SetWeld(weld, false);
        ListBelow(weld);
    }
}

void ItemEdits::ListBelow(const SbomPtr& assembly) {
    zritemlist::ItemList::Numbering numbering;
    m_list.GetZrkItemList()->GetNumberingSettings(numbering);
    if (numbering.hierarchical) {
        List(assembly);
        m_list.GenerateFromStructure(assembly, OpenOperation());
        return;
    }
    LeaveOrDelete(assembly);
    for (const SbomPtr& part : Below(assembly)) {
        if (!part->HasChildren()) List(part);
    }
}

// Parts of one kind are one item of the contents, in whichever of the kits they are.
void ItemEdits::ListContents(const std::vector<SbomPtr>& kits) {
    std::vector<std::vector<SbomPtr>> contents;
    std::map<const void*, std::size_t> placeOf;
    for (const SbomPtr& kit : kits) {
        for (const SbomPtr& part : Below(kit)) {
            const bool isPart = part->IsWeld() || !part->HasChildren();
            if (!isPart || part->IsWeldMember()) continue;
            const auto place = placeOf.emplace(part->GetComponentNode().get(), contents.size());
            if (place.second) contents.emplace_back();
            contents[place.first->second].push_back(part);
        }
    }
    for (const auto& parts : contents) m_list.AddItem(parts, "", false, true, OpenOperation());
}

void ItemEdits::MakeKits(const std::vector<SbomPtr>& assemblies) {
    const auto& items = *m_list.GetZrkItemList();
    for (const SbomPtr& assembly : assemblies) {
        unsigned id = 0;
        if (items.GetItemIdForInstance(assembly, id) && IsKit(items, id)) continue;
        if (assembly->IsWeld() || assembly->IsWeldMember() || IsInKit(items, *assembly)) {
            throw UserError("'" + assembly->GetIdentifier().Text() +
                            "' is a weld, or in a weld or kit; 'weld off' or 'item kit off' comes first");
        }
        const auto equal = EqualTo(assembly);
        for (const SbomPtr& kit : equal) {
            LeaveOrDelete(kit);
            for (const SbomPtr& part : Below(kit)) LeaveOrDelete(part);
        }
        m_list.AddItem(equal, "", true, true, OpenOperation());
        ListContents(equal);
    }
}

void ItemEdits::Unpack(const std::vector<SbomPtr>& kits) {
    const auto& items = *m_list.GetZrkItemList();
    for (const SbomPtr& kit : kits) {
        unsigned id = 0;
        if (!items.GetItemIdForInstance(kit, id) || !IsKit(items, id)) continue;
        const auto equal = items.GetOrderedInstances(id);
        Delete(id);
        zritemlist::ItemList::Numbering numbering;
        items.GetNumberingSettings(numbering);
        if (numbering.hierarchical) {
            m_list.GenerateFromStructure(RootOf(kit), OpenOperation());
            continue;
        }
        for (const SbomPtr& each : equal) ListBelow(each);
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
