#include "app/document/ItemEdits.h"

#include <map>
#include <set>

namespace zrsheet {

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
