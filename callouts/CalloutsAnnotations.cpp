// What the engine does when an annotation enters, leaves or changes in its scene.

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "callouts/Callouts.h"
#include "callouts/observers/InsetObserver.h"
#include "dp/ReadLocker.h"
#include "dp/WriteLocker.h"
#include "du/LocalizableString.h"
#include "zrannotations/CombinedCallout.h"
#include "zrannotations/LabelContent.h"
#include "zrannotations/SymbolAnnotation.h"
#include "zrk/annotation/AnnoSet.h"
#include "zrk/illustration/CollectionItem.h"
#include "zrk/illustration/Illustration3dScene.h"
#include "zrk/illustration/IsRunningIllustrate.h"
#include "zrk/world/Kernel.h"
#include "zrk/world/World.h"
#include "zrkapp/illustration/IllMultiRootContainer.h"
#include "zrkapp/illustration/KorvanFileInfo.h"
#include "zrkapp/illustration/LocalizationSettings.h"

namespace zrcallouts {
namespace {

using zrannotations::Callout;
using zrannotations::CombinedCallout;
using zrannotations::Inset;
using zrannotations::LabelContent;
using zrannotations::TAnnotation;

constexpr unsigned int kLiteralText = 0;
constexpr std::string_view kItemTagTemplate = "Item Tag";

/// Whether the document's settings ask for localised callout texts.
bool AreNotesLocalized() {
    if (!zrk::illustration::IsRunningIllustrate()) return false;
    const auto world = zrk::World::GetWorld();
    if (!world) return false;
    const auto container = du::DynamicCast<zrkapp::illustration::IllMultiRootContainer>(world->GetMRC());
    const auto info =
        container ? container->GetFileInfo() : du::SmartPtr<zrkapp::illustration::KorvanFileInfo>();
    const auto* settings = info ? info->GetLocalizationSettings() : nullptr;
    return settings != nullptr && settings->GetNotes();
}

bool IsTextOnly(const du::SmartPtr<TAnnotation>& definition) {
    std::vector<du::SmartPtr<LabelContent>> contents;
    if (definition) definition->GetTextContent(contents);
    return std::all_of(contents.begin(), contents.end(),
                       [](const auto& content) { return !content || content->Kind() == kLiteralText; });
}

bool IsItemTagTemplate(const du::SmartPtr<TAnnotation>& definition) {
    const auto item =
        definition ? definition->GetCollectionItem() : du::SmartPtr<zrk::illustration::CollectionItem>();
    return item && !item->IsCustom() && item->GetName() == kItemTagTemplate;
}

/// Members whose parts are all unknown in this scene have nothing to point at.
void DropLeaderlessMembers(CombinedCallout& combined) {
    auto members = combined.GetCalloutVec();
    const auto isLeaderless = [](const du::SmartPtr<Callout>& member) {
        return member && member->GetLeaderLineCount(false) == 0;
    };
    if (std::erase_if(members, isLeaderless) > 0) combined.SetCalloutVec(std::move(members));
}

}  // namespace

void Callouts::OnAddAnnotation(const du::SmartPtr<zrk::Annotation>& annotation) {
    const dp::WriteLocker write(GetRWLockPtr());
    if (du::DynamicCast<zrannotations::SymbolAnnotation>(annotation)) {
        OnAddSymbol(annotation);
    } else if (const auto callout = du::DynamicCast<Callout>(annotation)) {
        OnAddCallout(callout);
    } else if (const auto inset = du::DynamicCast<Inset>(annotation)) {
        OnAddInset(inset);
    }
}

void Callouts::OnAddSymbol(const du::SmartPtr<zrk::Annotation>& annotation) {
    const auto instance = du::DynamicCast<zrannotations::SymbolAnnotation>(annotation)->GetInstance();
    const std::lock_guard hold(m_guard);
    m_symbolAnnotations.emplace(instance, annotation);
}

void Callouts::OnAddInset(const InsetPtr& inset) {
    bool isKnown = false;
    {
        const std::lock_guard hold(m_guard);
        isKnown = !m_insetCallouts.emplace(inset, CalloutSet()).second;
    }
    if (isKnown) {
        for (const auto& callout : SnapshotInset(inset)) {
            callout->AttachSubsetScene(GetScene(), "");
            callout->BringToFront();
        }
    }
    const du::SmartPtr<InsetObserver> observer(new InsetObserver(inset, m_handle));
    if (const auto kernel = zrk::Kernel::GetKernel()) kernel->ManageObject(observer);
    inset->RegisterObserver(observer);
    const std::lock_guard hold(m_guard);
    if (!m_insetObservers.emplace(inset, observer).second) m_furtherInsetObservers.push_back(observer);
}

void Callouts::OnAddCallout(const CalloutPtr& callout) {
    const auto combined = du::DynamicCast<CombinedCallout>(callout);
    if (!Contains(callout)) {
        const unsigned int resolvedBefore = callout->GetLeaderLineCount(false);
        // Only writers change the maps, and the write lock is held; the callout reads them during the call
        // alone.
        callout->UpdateWithCalloutInfo(m_symbolAnnotations, m_insetCallouts);
        if (NeedsTextOnAdd(callout)) SetCalloutText(callout);
        LocalizeAddedCallout(callout);
        const unsigned int leaders = callout->GetLeaderLineCount(true);
        if (combined) {
            DropLeaderlessMembers(*combined);
            if (!combined->GetCalloutVec().empty() && leaders == 0) combined->UpdateLeaderLine();
        }
        if (callout->GetLeaderLineCount(false) != resolvedBefore) {
            const InsetPtr inset = callout->GetInsetAtPos(0);
            if (!inset || inset->IsVisible()) callout->AttachSubsetScene(GetScene(), "");
        }
        AdmitAddedCallout(callout, leaders);
    }
    if (combined) combined->ReattachChildren();
    if (GetItemsList()) SetIndicated(callout, true);
}

bool Callouts::NeedsTextOnAdd(const CalloutPtr& callout) const {
    const auto definition = callout->GetDefinition();
    return IsItemTagTemplate(definition) || callout->IsCombined() || !IsTextOnly(definition);
}

void Callouts::LocalizeAddedCallout(const CalloutPtr& callout) {
    const auto definition = callout->GetDefinition();
    if (callout->GetType() == zrannotations::CALLOUT_TYPE_SHAPE) return;
    if (definition && definition->RequiresPropertyVisitor()) return;
    callout->SetupLocalizationIfNecessary(AreNotesLocalized());
    du::LocalizableString text = callout->GetLocalizableString();
    text.SetDeleted(false);
    if (text.empty() || !callout->GetLocalizableString().IsEnabled()) return;
    callout->SetText(du::Symbol(text), true);
}

void Callouts::AdmitAddedCallout(const CalloutPtr& callout, unsigned int leaders) {
    const bool isFree = callout->GetType() == zrannotations::CALLOUT_TYPE_FREE;
    if (!isFree && callout->GetLeaderLineCount(true) == 0) {
        if (const auto annoSet = GetAnnoSet()) annoSet->RemoveAnnotationFromSet(callout, nullptr);
        return;
    }
    AddToMap(callout);
    AddToSet(callout);
    for (unsigned int i = 0; i < leaders; ++i) {
        if (const auto shapeInstance = callout->GetShapeInstanceAtPos(i)) {
            callout->OnShapeInstanceLocation(shapeInstance);
        }
    }
}

void Callouts::OnRemoveAnnotation(const du::SmartPtr<zrk::Annotation>& annotation) {
    if (const auto callout = du::DynamicCast<Callout>(annotation)) {
        OnRemoveCallout(callout);
    } else if (const auto inset = du::DynamicCast<Inset>(annotation)) {
        OnRemoveInset(inset);
    }
}

void Callouts::OnRemoveCallout(const CalloutPtr& callout) {
    {
        const dp::WriteLocker write(GetRWLockPtr());
        callout->ReleaseCalloutTemplate();
        callout->UnregisterTemplateObserver();
        RemoveFromSet(callout);
        RemoveFromMap(callout);
        FileSharersAnew(callout);
    }
    SetIndicated(callout, false);
}

// A member of a combined callout may be in the scene by itself as well: what stays still leads to its part.
void Callouts::FileSharersAnew(const CalloutPtr& removed) {
    const auto holder = du::DynamicCast<CombinedCallout>(removed->GetHolder());
    if (holder && Contains(holder)) {
        AddToMap(holder);
        holder->ReattachChildren();
    }
    const auto combined = du::DynamicCast<CombinedCallout>(removed);
    for (const auto& member : combined ? combined->GetCalloutVec() : std::vector<CalloutPtr>()) {
        if (!member || !Contains(member)) continue;
        AddToMap(member);
        member->SetItemIndex(GetItemIndex());
    }
}

void Callouts::OnRemoveInset(const InsetPtr& inset) {
    const dp::WriteLocker write(GetRWLockPtr());
    du::SmartPtr<InsetObserver> observer;
    {
        const std::lock_guard hold(m_guard);
        const auto entry = m_insetObservers.find(inset);
        if (entry == m_insetObservers.end()) return;
        observer = std::move(entry->second);
        m_insetObservers.erase(entry);
    }
    observer->ReleaseInset();
    inset->UnregisterObserver(observer);
}

void Callouts::OnAnnotationModified(const du::SmartPtr<zrk::Annotation>& annotation, bool) {
    if (const auto callout = du::DynamicCast<Callout>(annotation)) {
        const dp::ReadLocker read(GetRWLockPtr());
        const auto scene = du::DynamicCast<zrk::illustration::Illustration3dScene>(GetScene());
        const auto view =
            scene ? du::DynamicCast<zrk::ShapeView>(scene->GetView(0)) : du::SmartPtr<zrk::ShapeView>();
        if (view) OnDrawWhenHidden(view, callout);
    } else if (const auto inset = du::DynamicCast<Inset>(annotation)) {
        const bool isVisible = inset->IsVisible();
        for (const auto& attached : SnapshotInset(inset)) attached->SetVisible("", isVisible);
    }
}

}  // namespace zrcallouts
