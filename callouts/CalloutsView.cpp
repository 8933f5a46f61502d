// What reaches the engine from the view and the model: parts that move, hide and go, covered anchors, picked
// anchors, window size, background colours and indication.

#include <algorithm>
#include <cmath>
#include <utility>

#include "callouts/Callouts.h"
#include "callouts/events/CalloutAnchorVisibleEvent.h"
#include "callouts/events/CalloutPickAnchorEvent.h"
#include "callouts/events/CalloutsAnnoSetVisitor.h"
#include "dg/Location.h"
#include "dp/ReadLocker.h"
#include "dp/WriteLocker.h"
#include "zrannotations/CombinedCallout.h"
#include "zrk/annotation/AnnoSet.h"
#include "zrk/illustration/Illustration3dScene.h"
#include "zrk/illustration/ItemsList.h"
#include "zrk/scene/PickFlags.h"
#include "zrk/tree/ComponentInstance.h"
#include "zrk/world/Kernel.h"

namespace zrcallouts {
namespace {

using zrk::illustration::Illustration3dScene;

constexpr unsigned int kCalloutLabelMask = 0x4000;
const dg::Color kOpaqueBlack(0.0F, 0.0F, 0.0F, 1.0F);

du::Flags AnchorPickFlags() { return zrk::PICK_EXCLUDE_PHANTOM | zrk::PICK_ALL; }

/// The pixel that a projected coordinate falls on; far outside of any view, one that is outside as well.
int Pixel(double coordinate) {
    constexpr double kFar = 1e9;
    if (std::isnan(coordinate)) return -1;
    return static_cast<int>(std::clamp(coordinate + 0.5, -kFar, kFar));
}

du::SmartPtr<zrk::Instance> InstanceOf(const du::SmartPtr<zrk::ShapeInstance>& shapeInstance) {
    du::SmartPtr<zrk::Instance> instance;
    if (shapeInstance) shapeInstance->GetInstance(instance);
    return instance;
}

/// The id that callouts on the part are filed under, empty when it is no part of the product structure.
std::string PartId(const du::SmartPtr<zrk::Instance>& instance) {
    if (!instance || instance->Is3dSymbol()) return {};
    const auto* sbom = instance->GetSbomInstance();
    return sbom != nullptr ? sbom->GetIdentifier().Text() : std::string();
}

std::string PartOrSymbolId(const du::SmartPtr<zrk::Instance>& instance) {
    if (instance && instance->Is3dSymbol()) return instance->GetIdentifier();
    return PartId(instance);
}

std::string RemovedSymbolId(const du::SmartPtr<zrk::Instance>& instance) {
    du::SmartPtr<zrk::ComponentInstance> component;
    instance->GetComponentInstance(component);
    du::Symbol id;
    if (component) component->GetID(id);
    return "/" + id.Text();
}

du::SmartPtr<zrk::AnnoSet> AnnoSetOf(const du::SmartPtr<zrk::Scene>& scene) {
    du::SmartPtr<zrk::AnnoSet> annoSet;
    if (scene) scene->GetAnnoSet(annoSet);
    return annoSet;
}

bool RefersToCalloutLabels(const zrk::AnnoSet& annoSet) {
    // Counting walks over the set's own annotations too, which are the many.
    if (annoSet.GetReferencedAnnotations().empty()) return false;
    std::uint64_t own = 0;
    std::uint64_t referenced = 0;
    annoSet.GetAnnotationCounts(kCalloutLabelMask, own, referenced);
    return referenced != 0;
}

}  // namespace

void Callouts::OnShapeInstanceCreate(const du::SmartPtr<zrk::ShapeInstance>& shapeInstance) {
    const std::string id = PartId(InstanceOf(shapeInstance));
    if (id.empty()) return;
    for (const auto& callout : SnapshotInstance(id)) {
        callout->OnShapeInstanceCreate(shapeInstance);
        if (callout->GetLeaderLineCount(true) > callout->GetLeaderLineCount(false)) {
            callout->UpdateWithCalloutInfo();
            callout->SetLabelPosition(callout->GetPosition());
        }
        if (Contains(callout)) callout->AttachSubsetScene(GetScene(), id);
    }
}

void Callouts::OnShapeInstanceLocation(const du::SmartPtr<zrk::ShapeInstance>& shapeInstance) {
    const std::string id = PartOrSymbolId(InstanceOf(shapeInstance));
    if (id.empty()) return;
    for (const auto& callout : SnapshotInstance(id)) callout->OnShapeInstanceLocation(shapeInstance);
}

void Callouts::OnShapeInstanceVisibility(const du::SmartPtr<zrk::ShapeInstance>& shapeInstance,
                                         bool visible) {
    const std::string id = PartOrSymbolId(InstanceOf(shapeInstance));
    if (id.empty()) return;
    for (const auto& callout : SnapshotInstance(id)) {
        if (Contains(callout)) callout->SetVisible(id, visible);
    }
}

void Callouts::OnShapeInstanceRemove(const du::SmartPtr<zrk::ShapeInstance>& shapeInstance) {
    const auto instance = InstanceOf(shapeInstance);
    if (!instance) return;
    if (!instance->Is3dSymbol()) {
        const std::string id = PartId(instance);
        if (id.empty()) return;
        for (const auto& callout : SnapshotInstance(id)) callout->SetVisible(id, false);
        return;
    }
    const auto callouts = SnapshotInstance(RemovedSymbolId(instance));
    if (const auto annoSet = AnnoSetOf(GetScene())) {
        for (const auto& callout : callouts) annoSet->RemoveAnnotationFromSet(callout, nullptr);
    }
    const dp::WriteLocker write(GetRWLockPtr());
    SymbolMap::node_type removed;
    const std::lock_guard hold(m_guard);
    removed = m_symbolAnnotations.extract(instance);
}

/// What the checks of all leaders for one view have in common.
struct Callouts::LeaderCheck {
    du::SmartPtr<zrk::ShapeView> view;
    du::SmartPtr<Illustration3dScene> scene;
    du::SmartPtr<zrk::Kernel> kernel;
    dg::Camera3D camera;
    dg::Color dimColor;
    bool drawWhenHidden = false;
};

void Callouts::OnDrawWhenHidden(du::SmartPtr<zrk::ShapeView> view) {
    if (!view) return;
    if (const auto check = BeginLeaderCheck(view)) {
        const dp::ReadLocker read(GetRWLockPtr());
        const Snapshot callouts = SnapshotCallouts();
        for (const auto& callout : *callouts) CheckLeaders(*check, callout);
    }
    const auto annoSet = AnnoSetOf(view->GetScene());
    if (!annoSet || !RefersToCalloutLabels(*annoSet)) return;
    CalloutsAnnoSetVisitor visitor(this, view, annoSet);
    annoSet->Visit(visitor);
}

void Callouts::OnDrawWhenHidden(du::SmartPtr<zrk::ShapeView> view, const CalloutPtr& callout) {
    const auto check = view ? BeginLeaderCheck(view) : nullptr;
    if (check && callout) CheckLeaders(*check, callout);
}

/// Null when there is nobody to ask.
std::unique_ptr<Callouts::LeaderCheck> Callouts::BeginLeaderCheck(
    const du::SmartPtr<zrk::ShapeView>& view) const {
    auto check = std::make_unique<LeaderCheck>();
    check->view = view;
    check->scene = du::DynamicCast<Illustration3dScene>(view->GetShapeScene());
    check->kernel = zrk::Kernel::GetKernel();
    if (!check->scene || !check->kernel) return nullptr;
    view->GetCamera(check->camera);
    check->dimColor = DimColor();
    check->drawWhenHidden = check->scene->GetDrawWhenHidden();
    return check;
}

void Callouts::CheckLeaders(const LeaderCheck& check, const CalloutPtr& callout) {
    const dp::WriteLocker write(GetRWLockPtr());
    const unsigned int leaders = callout->GetLeaderLineCount(false);
    for (unsigned int i = 0; i < leaders; ++i) {
        if (check.drawWhenHidden) {
            callout->SetHiddenAsDashedAtPos(true, i);
            callout->SetDimAtPos(false, i, check.dimColor);
        } else {
            CheckLeader(check, callout, i);
        }
    }
}

dg::Color Callouts::DimColor() const {
    dg::Color color1;
    dg::Color color2;
    {
        const std::lock_guard hold(m_guard);
        color1 = m_backgroundColor1;
        color2 = m_backgroundColor2;
    }
    dg::Color dimColor = kOpaqueBlack;
    zrannotations::Callout::GetBlendColor(color1, color2, dimColor);
    return dimColor;
}

// Called under the write lock. The check counts as outstanding before it is sent; one whose magnifier has no
// camera stays so until the kernel cancels its event.
void Callouts::CheckLeader(const LeaderCheck& check, const CalloutPtr& callout, unsigned int position) {
    zrannotations::Callout::LeaderEnd end;
    if (!callout->GetLeaderEndAtPos(position, end) || end.isHidden || !end.part->IsVisible()) return;
    dg::Location location;
    end.part->GetLocation(location);
    ++m_pickRequestCount;
    const du::SmartPtr<CalloutAnchorVisibleEvent> event(new CalloutAnchorVisibleEvent(
        du::SmartPtr<Callouts>(this), check.scene, callout, position, check.dimColor));
    check.kernel->ManageObject(event);
    dg::DPoint3D point = end.anchor * location;
    if (!end.inset) {
        point *= check.camera.GetWorldToPixel();
        check.view->Pick(check.camera, Pixel(point.x), Pixel(point.y), AnchorPickFlags(), event.get());
        return;
    }
    const auto insetView = end.inset->GetInsetView();
    dg::Camera3D magnifier;
    if (!insetView || !end.inset->GetMagnifierCamera(magnifier)) return;
    point *= magnifier.GetWorldToPixel();
    insetView->Pick(Pixel(point.x), Pixel(point.y), AnchorPickFlags(), event.get());
}

void Callouts::OnHandleTimeoutEvent(const du::SmartPtr<zrk::ShapeView>& view, dg::Camera3D& camera) {
    const auto scene = view ? du::DynamicCast<Illustration3dScene>(view->GetShapeScene())
                            : du::SmartPtr<Illustration3dScene>();
    if (!scene || scene->GetDrawWhenHidden()) return;
    dg::Camera3D current;
    view->GetCamera(current);
    if (current == camera || GetPickRequestCount() != 0) return;
    camera = current;
    OnDrawWhenHidden(view);
}

void Callouts::OnReceiveAnchorVisiblePick() {
    const dp::WriteLocker write(GetRWLockPtr());
    --m_pickRequestCount;
}

void Callouts::RequestAnchorPick(const CalloutPtr& callout) {
    const auto kernel = zrk::Kernel::GetKernel();
    if (!callout || callout->IsAnchorPointCalculated() || !kernel) return;
    const auto scene = GetScene();
    const auto view =
        scene ? du::DynamicCast<zrk::ShapeView>(scene->GetView(0)) : du::SmartPtr<zrk::ShapeView>();
    if (!view) return;
    dg::Camera3D camera;
    view->GetCamera(camera);
    const unsigned int leaders = callout->GetLeaderLineCount(false);
    for (unsigned int i = 0; i < leaders; ++i) {
        if (callout->GetInsetAtPos(i)) continue;
        const auto shapeInstance = callout->GetShapeInstanceAtPos(i);
        dg::DPoint3D point;
        if (!shapeInstance || !callout->GetAnchorAtPos(i, point)) continue;
        dg::Location location;
        shapeInstance->GetLocation(location);
        const du::SmartPtr<CalloutPickAnchorEvent> event(
            new CalloutPickAnchorEvent(du::SmartPtr<Callouts>(this), callout, i));
        kernel->ManageObject(event);
        point *= location;
        point *= camera.GetWorldToPixel();
        view->Pick(shapeInstance, Pixel(point.x), Pixel(point.y), AnchorPickFlags(), event.get());
    }
}

void Callouts::OnReceivePick(const std::vector<zrk::PickResult>& results, CalloutPtr callout,
                             int leaderIndex) {
    if (!callout || leaderIndex < 0) return;
    for (const auto& result : results) {
        const auto object = result.GetObject();
        if (!object || !(object->GetClassType() == zrk::ShapeInstance::CLASS_TYPE)) continue;
        const auto shapeInstance = du::DynamicCast<zrk::ShapeInstance>(object);
        if (!shapeInstance) continue;
        dg::Location location;
        shapeInstance->GetLocation(location);
        callout->SetAnchor(result.GetPoint() * location.GetXform().Invert(),
                           static_cast<unsigned int>(leaderIndex));
        return;
    }
}

void Callouts::OnWindowSize() {
    const dp::ReadLocker read(GetRWLockPtr());
    const Snapshot callouts = SnapshotCallouts();
    for (const auto& callout : *callouts) {
        const unsigned int leaders = callout->GetLeaderLineCount(false);
        for (unsigned int i = 0; i < leaders; ++i) {
            callout->SetVisibleWithinInsetBounds(callout->GetInsetAtPos(i));
        }
    }
}

void Callouts::SetBackgroundColor(const du::SmartPtr<zrk::ShapeView>& view) {
    if (!view) return;
    dg::Color color1;
    dg::Color color2;
    dg::Color color3;
    view->GetBackgroundColors(color1, color2, color3);
    const std::lock_guard hold(m_guard);
    m_backgroundColor1 = color1;
    m_backgroundColor2 = color2;
    m_backgroundColor3 = color3;
}

void Callouts::OnBackgroundColor(const du::SmartPtr<zrk::ShapeView>& view) {
    const auto scene = view ? du::DynamicCast<Illustration3dScene>(view->GetShapeScene())
                            : du::SmartPtr<Illustration3dScene>();
    if (!scene) return;
    SetBackgroundColor(view);
    if (!scene->GetDrawWhenHidden()) OnDrawWhenHidden(view);
}

// A callout can change its item while it is in the scene: by another template, or with the history.
void Callouts::IndicateItem(unsigned int itemId) {
    const auto itemList = GetItemsList();
    if (const auto items =
            itemList ? itemList->GetZrkItemList() : du::SmartPtr<zrk::illustration::ItemsList>()) {
        const std::lock_guard hold(m_indication);
        items->SetIndicated(itemId, IsItemUsed(itemId));
    }
}

void Callouts::SetIndicated(const CalloutPtr& callout, bool indicated) {
    const auto itemList = GetItemsList();
    if (!callout || !itemList) return;
    if (const auto combined = du::DynamicCast<zrannotations::CombinedCallout>(callout)) {
        const std::vector<CalloutPtr> members = combined->GetCalloutVec();
        for (const auto& member : members) SetIndicated(member, indicated);
        return;
    }
    unsigned int id = 0;
    const auto items = itemList->GetZrkItemList();
    if (!items || !callout->GetItemId(id)) return;
    const std::lock_guard hold(m_indication);
    if (indicated || !IsItemUsed(id)) items->SetIndicated(id, indicated);
}

}  // namespace zrcallouts
