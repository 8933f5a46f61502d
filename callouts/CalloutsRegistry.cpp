// The indexes over the scene's callouts: how callouts enter and leave them, and the queries.

#include <algorithm>
#include <utility>

#include "callouts/Callouts.h"
#include "callouts/observers/CalloutTemplateObserver.h"
#include "dp/ReadLocker.h"
#include "dp/WriteLocker.h"
#include "zrannotations/CombinedCallout.h"
#include "zrk/illustration/ItemsList.h"

namespace zrcallouts {

void Callouts::AddToSet(const CalloutPtr& callout) {
    {
        const dp::WriteLocker write(GetRWLockPtr());
        Snapshot former;  // released after the guard
        {
            const std::lock_guard hold(m_guard);
            m_callouts.insert(callout);
            former.swap(m_snapshot);
        }
        callout->SetItemIndex(GetItemIndex());
    }
    if (callout->IsCustomCallout()) return;
    callout->RegisterTemplateObserver(
        du::SmartPtr<CalloutTemplateObserver>(new CalloutTemplateObserver(callout.get(), m_handle)));
}

void Callouts::AddToMap(const CalloutPtr& callout) { ForEachLeader(callout, &Callouts::FileLeader); }

void Callouts::RemoveFromMap(const CalloutPtr& callout) { ForEachLeader(callout, &Callouts::UnfileLeader); }

void Callouts::ForEachLeader(const CalloutPtr& callout, LeaderAction action) {
    const dp::WriteLocker write(GetRWLockPtr());
    if (const auto combined = du::DynamicCast<zrannotations::CombinedCallout>(callout)) {
        const std::vector<CalloutPtr> members = combined->GetCalloutVec();
        for (std::size_t i = 1; i < members.size(); ++i) {
            if (members[i]) ForEachLeader(members[i], action);
        }
    }
    const unsigned int leaders = callout->GetLeaderLineCount(true);
    for (unsigned int i = 0; i < leaders; ++i) (this->*action)(callout, i);
}

void Callouts::FileLeader(const CalloutPtr& callout, unsigned int position) {
    const std::string id = callout->GetShapeInstanceIdAtPos(position);
    const InsetPtr inset = callout->GetInsetAtPos(position);
    bool isInsetKnown = false;
    {
        const std::lock_guard hold(m_guard);
        m_instanceIdCallouts.emplace(id, callout);
        const auto entry = inset ? m_insetCallouts.find(inset) : m_insetCallouts.end();
        isInsetKnown = entry != m_insetCallouts.end();
        if (isInsetKnown) entry->second.insert(callout);
    }
    if (isInsetKnown) inset->AttachCallout(callout);
}

// The caller's reference keeps the callout alive, so nothing is freed while the guard is held.
void Callouts::UnfileLeader(const CalloutPtr& callout, unsigned int position) {
    const std::string id = callout->GetShapeInstanceIdAtPos(position);
    const InsetPtr inset = callout->GetInsetAtPos(position);
    const std::lock_guard hold(m_guard);
    m_instanceIdCallouts.erase({id, callout});
    // An inset keeps its entry: callouts that come later are still recorded for it.
    const auto entry = inset ? m_insetCallouts.find(inset) : m_insetCallouts.end();
    if (entry != m_insetCallouts.end()) entry->second.erase(callout);
}

void Callouts::RemoveFromSet(const CalloutPtr& callout) {
    Snapshot former;  // released after the guard
    {
        const std::lock_guard hold(m_guard);
        if (m_callouts.erase(callout) == 0) return;
        former.swap(m_snapshot);
    }
    callout->SetItemIndex(nullptr);
}

std::shared_ptr<zrannotations::ItemIndex> Callouts::GetItemIndex() const {
    const std::lock_guard hold(m_guard);
    return m_itemIndex;
}

// Copied once for all walks up to the next change.
Callouts::Snapshot Callouts::SnapshotCallouts() const {
    const std::lock_guard hold(m_guard);
    if (!m_snapshot) {
        m_snapshot = std::make_shared<const std::vector<CalloutPtr>>(m_callouts.begin(), m_callouts.end());
    }
    return m_snapshot;
}

std::vector<Callouts::CalloutPtr> Callouts::SnapshotInstance(const std::string& instanceId) const {
    const std::lock_guard hold(m_guard);
    std::vector<CalloutPtr> found;
    for (auto entry = m_instanceIdCallouts.lower_bound({instanceId, nullptr});
         entry != m_instanceIdCallouts.end() && entry->first == instanceId; ++entry)
        found.push_back(entry->second);
    return found;
}

std::vector<Callouts::CalloutPtr> Callouts::SnapshotInset(const InsetPtr& inset) const {
    const std::lock_guard hold(m_guard);
    const auto entry = m_insetCallouts.find(inset);
    if (entry == m_insetCallouts.end()) return {};
    return {entry->second.begin(), entry->second.end()};
}

bool Callouts::Contains(const CalloutPtr& callout) const {
    const std::lock_guard hold(m_guard);
    return m_callouts.contains(callout);
}

bool Callouts::Exists(const std::string& instanceId, const std::string& text) const {
    const auto callouts = SnapshotInstance(instanceId);
    return std::any_of(callouts.begin(), callouts.end(),
                       [&](const auto& callout) { return callout->GetText(false).Text() == text; });
}

void Callouts::GetCalloutSetForSbomInstance(const du::SmartPtr<zrk::illustration::SbomInstance>& sbom,
                                            CalloutSet& out) {
    out.clear();
    if (!sbom) return;
    const dp::ReadLocker read(GetRWLockPtr());
    const auto callouts = SnapshotInstance(sbom->GetIdentifier());
    out.insert(callouts.begin(), callouts.end());
}

void Callouts::GetItemIdCallouts(unsigned int itemId, std::vector<CalloutPtr>& out) const {
    const dp::ReadLocker read(GetRWLockPtr());
    const auto callouts = GetItemIndex()->Find(itemId);
    out.insert(out.end(), callouts.begin(), callouts.end());
}

void Callouts::GetItemIdCallouts(const std::vector<unsigned int>& itemIds,
                                 std::vector<CalloutPtr>& out) const {
    const dp::ReadLocker read(GetRWLockPtr());
    for (const unsigned int id : itemIds) GetItemIdCallouts(id, out);
}

void Callouts::GetItemdIds(std::set<unsigned int>& out) const {
    const dp::ReadLocker read(GetRWLockPtr());
    const Snapshot callouts = SnapshotCallouts();
    for (const auto& callout : *callouts) {
        unsigned int id = 0;
        if (callout->GetItemId(id)) out.insert(id);
    }
}

bool Callouts::IsItemUsed(unsigned int itemId) const { return GetItemIndex()->IsUsed(itemId); }

bool Callouts::CheckForTypeUpdate(du::SmartPtr<zrannotations::Callout>& callout) {
    const auto definition = callout->GetDefinition();
    const bool requiresItem = definition && definition->RequiresItemList();
    const auto type = callout->GetType();
    if (!requiresItem) {
        if (type != zrannotations::CALLOUT_TYPE_SHAPE) return false;
        callout->RemoveItemId();
        return true;
    }
    if (type != zrannotations::CALLOUT_TYPE_ASSEMBLY) return false;
    const auto assembly =
        du::DynamicCast<zrk::illustration::SbomInstance>(callout->GetAssemblyInstanceAtPos(0));
    const auto itemList = GetItemsList();
    const auto items = itemList ? itemList->GetZrkItemList() : du::SmartPtr<zrk::illustration::ItemsList>();
    if (!assembly || !items) return false;
    unsigned int id = 0;
    if (!items->GetItemIdForInstance(assembly, id)) {
        id = itemList->AddInstance(assembly, nullptr, false, "");
    } else if (!items->GetItemized(id)) {
        return false;
    }
    callout->SetItemId(id);
    return true;
}

}  // namespace zrcallouts
