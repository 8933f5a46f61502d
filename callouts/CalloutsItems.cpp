// Keeping callouts in step with the item list: items removed, cleared, changed, and groups of instances.

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "callouts/Callouts.h"
#include "callouts/events/UpdateItemGroupLeadersOperationStep.h"
#include "dp/ReadLocker.h"
#include "dp/WriteLocker.h"
#include "zrannotations/CalloutLeader.h"
#include "zrannotations/CombinedCallout.h"
#include "zrk/annotation/AnnoSet.h"
#include "zrk/illustration/ItemsList.h"
#include "zrk/object/Checked.h"

namespace zrcallouts {
namespace {

using zrannotations::Callout;
using zrannotations::CombinedCallout;
using zrk::illustration::SbomInstance;

/// What an instance of an item group means for a leader: the part it goes to and the assembly it stands for.
struct GroupTarget {
    du::SmartPtr<zrk::ShapeInstance> shapeInstance;
    du::SmartPtr<zrk::BaseInstance> assembly;
};

/// No shape instance when the instance has nothing to show in the scene. The first of its engineering
/// instances stands for all; the instance itself is the leader's assembly unless it is just that one.
GroupTarget FindTarget(const du::SmartPtr<SbomInstance>& sbom, const du::SmartPtr<zrk::ShapeScene>& scene) {
    GroupTarget target;
    std::set<du::SmartPtr<zrk::Instance>> instances;
    std::set<du::SmartPtr<zrk::Instance>> others;
    if (sbom) sbom->GetEbomInstancesForWeld(instances, others);
    if (instances.empty() || !scene) return target;
    scene->GetShapeInstance(*instances.begin(), target.shapeInstance);
    if (instances.size() != 1) target.assembly = sbom;
    return target;
}

std::unordered_set<const zrk::ShapeInstance*> PartsLedTo(const Callout& callout) {
    std::unordered_set<const zrk::ShapeInstance*> parts;
    const unsigned int leaders = callout.GetLeaderLineCount(false);
    for (unsigned int i = 0; i < leaders; ++i) parts.insert(callout.GetShapeInstanceAtPos(i).get());
    return parts;
}

/// The callout stays filed under the part: whoever looks a part up must be ready for a callout that no longer
/// leads there.
void RemoveLeaderTo(Callout& callout, const du::SmartPtr<zrk::ShapeInstance>& shapeInstance) {
    const unsigned int leaders = callout.GetLeaderLineCount(false);
    for (unsigned int i = 0; i < leaders; ++i) {
        if (callout.GetShapeInstanceAtPos(i) != shapeInstance) continue;
        callout.RemoveLeaderAtPos(i);
        return;
    }
}

}  // namespace

void Callouts::OnItemRemoved(unsigned int itemId, const du::SmartPtr<zrk::Operation>& operation) {
    const dp::WriteLocker write(GetRWLockPtr());
    const auto annoSet = GetAnnoSet();
    if (!annoSet) return;
    std::vector<du::SmartPtr<CombinedCallout>> reduced;
    std::vector<CalloutPtr> remaining;
    for (const auto& callout : GetItemIndex()->Find(itemId)) {
        // Removing a callout takes those that depend on it along.
        if (!Contains(callout) || !callout->ReferencesItemId(itemId)) continue;
        const auto combined = du::DynamicCast<CombinedCallout>(callout);
        if (!combined) {
            annoSet->RemoveAnnotationWithDependencies(callout, operation);
            continue;
        }
        ReduceCombinedCallout(combined, itemId);
        if (combined->GetCount() != 1) continue;
        reduced.push_back(combined);
        remaining.push_back(combined->GetCalloutVec().front());
    }
    RemoveReferencedCallouts(itemId, operation);
    for (const auto& combined : reduced) annoSet->RemoveAnnotationFromSet(combined, operation);
    for (const auto& member : remaining) annoSet->AddAnnotationToSet(member, operation);
}

// The registry follows the combined callout's leaders: out before its item goes, in again afterwards.
void Callouts::ReduceCombinedCallout(const du::SmartPtr<CombinedCallout>& combined, unsigned int itemId) {
    RemoveFromMap(combined);
    combined->RemoveItemId(itemId);
    SetCalloutText(combined);
    AddToMap(combined);
}

void Callouts::RemoveReferencedCallouts(unsigned int itemId, const du::SmartPtr<zrk::Operation>& operation) {
    const auto annoSet = GetAnnoSet();
    for (const auto& annotation : annoSet->GetReferencedAnnotations()) {
        const auto callout = du::DynamicCast<Callout>(annotation);
        if (!callout || !callout->ReferencesItemId(itemId)) continue;
        annoSet->AddAnnotationToSet(callout, operation);
        annoSet->RemoveAnnotationWithDependencies(callout, operation);
        annoSet->RemoveReferencedAnnotation(callout);
        SetIndicated(callout, false);  // one without leaders was refused, and its item highlighted even so
    }
}

void Callouts::OnListCleared(const du::SmartPtr<zrk::Operation>& operation) {
    const dp::WriteLocker write(GetRWLockPtr());
    const auto annoSet = GetAnnoSet();
    if (!annoSet) return;
    bool isAnyRemoved = false;
    const Snapshot callouts = SnapshotCallouts();
    for (const auto& callout : *callouts) {
        if (!Contains(callout) || !callout->HasItemId()) continue;
        annoSet->RemoveAnnotationWithDependencies(callout, operation);
        isAnyRemoved = true;
    }
    if (isAnyRemoved) MarkViewDirty();
}

void Callouts::OnItemContentChanged(unsigned int itemId, SbomSet, SbomSet) {
    if (!GetItemsList()) return;
    for (const auto& callout : GetItemIndex()->Find(itemId)) SetCalloutText(callout);
}

void Callouts::UpdateItemGroupCalloutLeaders(unsigned int itemId, SbomSet connect, SbomSet disconnect,
                                             du::SmartPtr<zrk::Operation> operation) {
    const dp::ReadLocker read(GetRWLockPtr());
    {
        const std::lock_guard hold(m_guard);
        if (m_callouts.empty()) return;
    }
    bool isAnyAdded = false;
    for (const auto& callout : GetItemsList() ? GetItemIndex()->Find(itemId) : std::vector<CalloutPtr>()) {
        if (isAnyAdded) break;
        ConnectItemGroup(callout, connect, isAnyAdded);
        if (isAnyAdded && m_combineForSamePart) callout->ShowAllLeaders(nullptr);
        DisconnectItemGroup(callout, disconnect);
    }
    if (operation) {
        operation->AddStep(
            du::SmartPtr<zrk::OperationStep>(zrk::Checked(new UpdateItemGroupLeadersOperationStep(
                du::SmartPtr<Callouts>(this), itemId, std::move(connect)))));
    }
}

void Callouts::ConnectItemGroup(const CalloutPtr& callout, const SbomSet& connect, bool& added) {
    auto parts = PartsLedTo(*callout);
    for (const auto& sbom : connect) {
        const GroupTarget target = FindTarget(sbom, GetScene());
        dg::DPoint3D anchor;
        if (!target.shapeInstance || parts.contains(target.shapeInstance.get())) continue;
        if (!callout->CalculateAnchor(target.shapeInstance, anchor)) continue;
        if (const auto leader = callout->CreateCalloutLeader(anchor, target.shapeInstance, target.assembly)) {
            leader->m_collapsed = true;
            callout->ConnectLeader(leader);
            parts.insert(target.shapeInstance.get());
            added = true;
        }
        AddToMap(callout);
    }
}

void Callouts::DisconnectItemGroup(const CalloutPtr& callout, const SbomSet& disconnect) {
    for (const auto& sbom : disconnect) {
        const GroupTarget target = FindTarget(sbom, GetScene());
        if (target.shapeInstance) RemoveLeaderTo(*callout, target.shapeInstance);
    }
}

}  // namespace zrcallouts
