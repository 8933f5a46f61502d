#include "callouts/generator/CalloutGenerator.h"

#include <utility>

#include "callouts/align/Layout.h"
#include "callouts/generator/AnnotationVisitor.h"
#include "callouts/generator/CreateCalloutsTask.h"
#include "dp/WriteLocker.h"
#include "dp/ZRTracer.h"
#include "du/Localizer.h"
#include "zrk/annotation/AnnoSet.h"
#include "zrk/illustration/ItemsList.h"
#include "zrk/object/Checked.h"
#include "zrk/world/World.h"
#include "zrkapp/illustration/IllMultiRootContainer.h"

namespace zrcallouts {
namespace {

using zrannotations::Callout;

constexpr const char* kMessageModule = "zrbase:zrmodulesStrings";
constexpr const char* kCreateCalloutsMessage = "142";
constexpr int kTraceLevel = 3;

bool AreTextsLocalized() {
    const auto world = zrk::World::GetWorld();
    if (!world) return false;
    const auto container = du::DynamicCast<zrkapp::illustration::IllMultiRootContainer>(world->GetMRC());
    const auto info =
        container ? container->GetFileInfo() : du::SmartPtr<zrkapp::illustration::KorvanFileInfo>();
    return info && info->GetLocalizationSettings()->GetNotes();
}

du::SmartPtr<zrk::AnnoSet> AnnoSetOf(const du::SmartPtr<zrk::Scene>& scene) {
    du::SmartPtr<zrk::AnnoSet> annoSet;
    if (scene) scene->GetAnnoSet(annoSet);
    return annoSet;
}

du::SmartPtr<zrk::Instance> FirstInstanceOf(const Callout& callout) {
    const auto shapeInstance = callout.GetShapeInstanceAtPos(0);
    du::SmartPtr<zrk::Instance> instance;
    if (shapeInstance) shapeInstance->GetInstance(instance);
    return instance;
}

/// The part that the callout is about: the assembly it stands for, else the part of its first leader.
CalloutGenerator::SbomPtr SbomInstanceOf(const Callout& callout) {
    const auto assembly =
        du::DynamicCast<zrk::illustration::SbomInstance>(callout.GetAssemblyInstanceAtPos(0));
    if (assembly) return assembly;
    const auto instance = FirstInstanceOf(callout);
    return instance ? CalloutGenerator::SbomPtr(instance->GetSbomInstance()) : nullptr;
}

bool NeedsNumber(const Callout& callout) {
    const auto definition = callout.GetDefinition();
    return definition && definition->RequiresItemList() &&
           callout.GetType() != zrannotations::CALLOUT_TYPE_FREE;
}

}  // namespace

constinit const zrk::ClassType CalloutGenerator::CLASS_TYPE(1001, "zrcallouts::CalloutGenerator",
                                                            &zrk::Object::CLASS_TYPE);

CalloutGenerator::CalloutGenerator(du::SmartPtr<Callouts> callouts)
    : zrk::ObjectWithRWLock(GetRWLock()), m_callouts(std::move(callouts)) {
    if (!m_callouts) return;
    m_scene = m_callouts->GetScene();
    if (m_scene) m_view = m_scene->GetView(0);
    m_itemList = m_callouts->GetItemsList();
}

CalloutGenerator::~CalloutGenerator() { m_createdCallouts.clear(); }

du::SmartPtr<zrk::ReadWriteLock> CalloutGenerator::GetRWLock() {
    static const du::SmartPtr<zrk::ReadWriteLock> kLock(new zrk::ReadWriteLock);
    return kLock;
}

void CalloutGenerator::CreateCallouts(const du::SmartPtr<Callouts>& callouts, Selection&& selection,
                                      const du::SmartPtr<zrk::AsyncEvent>& event) {
    const du::SmartPtr<du::Task> task(new CreateCalloutsTask(callouts, std::exchange(selection, {}), event));
    const auto world = zrk::World::GetWorld();
    if (world && world->GetTaskPool() != nullptr) world->GetTaskPool()->InsertTask(task);
}

CalloutGenerator::OperationPtr CalloutGenerator::MakeOperation() const {
    const std::string name = du::Localizer(kMessageModule).LocalizeMessage(kCreateCalloutsMessage);
    return OperationPtr(zrk::Checked(new zrk::Operation(name, m_scene, true)));
}

du::SmartPtr<zrk::illustration::ItemsList> CalloutGenerator::KernelItems() const {
    return m_itemList ? m_itemList->GetZrkItemList() : du::SmartPtr<zrk::illustration::ItemsList>();
}

void CalloutGenerator::InitializeSelected(const Selection& selection, const OperationPtr& operation) {
    const auto definition =
        m_callouts ? m_callouts->GetTemplate() : du::SmartPtr<zrannotations::TAnnotation>();
    if (definition) {
        m_requiresItemList = definition->RequiresItemList();
        m_requiresPropertyVisitor = !m_requiresItemList && definition->RequiresPropertyVisitor();
        m_plainCategory = !m_requiresItemList && !m_requiresPropertyVisitor;
        m_variantsCount = ComputeNumberOfVariants(selection, operation);
    }
    InitCategoryIterators();
}

bool CalloutGenerator::InitCategoryIterators() {
    if (m_plainCategory) {
        m_instanceIt = m_instanceVariants.begin();
        m_instanceEnd = m_instanceVariants.end();
        return true;
    }
    if (m_requiresPropertyVisitor) {
        m_propertyIt = m_propertyVariants.begin();
        m_propertyEnd = m_propertyVariants.end();
        return true;
    }
    if (m_requiresItemList) {
        m_itemIdIt = m_itemIdVariants.begin();
        m_itemIdEnd = m_itemIdVariants.end();
    }
    return false;
}

bool CalloutGenerator::NextCategory() {
    const auto step = [](auto& it, const auto& end) {
        if (it == end) return false;
        ++it;
        return true;
    };
    if (m_plainCategory) return step(m_instanceIt, m_instanceEnd);
    if (m_requiresPropertyVisitor) return step(m_propertyIt, m_propertyEnd);
    return m_requiresItemList && step(m_itemIdIt, m_itemIdEnd);
}

bool CalloutGenerator::CompletedCategoryIterators() const {
    if (m_plainCategory) return m_instanceIt == m_instanceEnd;
    if (m_requiresPropertyVisitor) return m_propertyIt == m_propertyEnd;
    return !m_requiresItemList || m_itemIdIt == m_itemIdEnd;
}

void CalloutGenerator::FinalizeCallouts(const std::vector<CalloutPtr>& callouts) {
    for (const auto& callout : callouts) {
        // From admission to registration, so that of two runs at once one sees what the other admitted.
        const dp::WriteLocker write(m_callouts->GetRWLockPtr());
        if (!m_callouts->IsAllowed(callout)) continue;
        m_createdCallouts.insert(callout);
        if (m_callouts->HasTemplateText(callout)) {
            m_callouts->SetCalloutText(callout);
        } else {
            m_callouts->SetPredefinedText(callout);
        }
        m_callouts->AddToMap(callout);
        m_callouts->AddToSet(callout);
        m_callouts->RequestAnchorPick(callout);
    }
}

void CalloutGenerator::Withdraw(const OperationPtr& operation) {
    for (const auto& callout : m_createdCallouts) m_callouts->TakeBack(callout);
    m_createdCallouts.clear();
    if (operation) operation->Undo();
}

void CalloutGenerator::DoOrWithdraw(const OperationPtr& operation, const std::function<void()>& work) {
    try {
        work();
    } catch (...) {
        Withdraw(operation);
        throw;
    }
}

void CalloutGenerator::PerformLayout() {
    Layout(m_callouts, du::DynamicCast<zrk::ShapeView>(m_view)).Execute(m_createdCallouts);
}

void CalloutGenerator::ShowCreatedCallouts(const OperationPtr& operation) {
    ShowCallouts(m_createdCallouts, operation);
}

void CalloutGenerator::ShowCallouts(const std::set<CalloutPtr>& callouts, const OperationPtr& operation) {
    std::vector<CalloutPtr> shown;
    for (const auto& callout : callouts) {
        if (callout) shown.push_back(callout);
    }
    if (!shown.empty()) ShowCallouts(shown, operation);
}

void CalloutGenerator::ShowCallouts(const std::vector<CalloutPtr>& callouts, const OperationPtr& operation) {
    const auto annoSet = AnnoSetOf(m_scene);
    if (!annoSet) return;
    const bool isLocalized = AreTextsLocalized();
    bool isAnyShown = false;
    for (std::size_t i = 0; i < callouts.size(); ++i) {
        const auto& callout = callouts[i];
        if (!callout || !callout->IsInitialized()) continue;
        isAnyShown = true;
        if (m_view) callout->SetViewId(m_view->GetViewId());
        dp::ZRTracer("zrcallouts", "CalloutGenerator")(kTraceLevel, "AddAnnotationToSet for callout %d",
                                                       static_cast<int>(i));
        annoSet->AddAnnotationToSet(callout, operation);
        LocalizeShown(callout, isLocalized);
    }
    if (isAnyShown && m_view) m_view->SetDirty();
}

/// Callouts on a part itself keep their text as it is.
void CalloutGenerator::LocalizeShown(const CalloutPtr& callout, bool isLocalized) const {
    if (callout->GetType() == zrannotations::CALLOUT_TYPE_SHAPE) return;
    const auto definition = callout->GetDefinition();
    if (definition && definition->RequiresPropertyVisitor()) return;
    callout->SetupLocalizationIfNecessary(isLocalized);
    if (!definition) return;
    du::Symbol text;
    m_callouts->GetTemplateLocalizableString(callout, text);
    callout->GetLocalizableString() = text;
}

void CalloutGenerator::AddCallouts(const std::vector<CalloutPtr>& callouts, OperationPtr& operation) {
    if (!m_callouts) return;
    std::vector<CalloutPtr> kept;
    AnnotationVisitor symbols;
    bool areSymbolsKnown = false;
    for (const auto& callout : callouts) {
        if (!callout) continue;
        if (NeedsNumber(*callout)) {
            if (NumberCallout(callout, operation)) kept.push_back(callout);
            continue;
        }
        const auto instance = FirstInstanceOf(*callout);
        if (instance && instance->Is3dSymbol()) {
            // Nothing enters the scene meanwhile, so that one walk serves all.
            const auto annoSet = areSymbolsKnown ? du::SmartPtr<zrk::AnnoSet>() : AnnoSetOf(m_scene);
            if (annoSet) annoSet->Visit(symbols);
            areSymbolsKnown = true;
            callout->SetSymbolIdAtPos(symbols.GetSymbolId(instance), 0);
        }
        kept.push_back(callout);
    }
    if (kept.empty()) return;
    if (!operation) operation = MakeOperation();
    DoOrWithdraw(nullptr, [&] {
        FinalizeCallouts(kept);
        ShowCallouts(kept, operation);
    });
    zrk::RecordOperation(operation);
}

/// Gives the callout the item of its part, which is listed if need be; false to drop the callout.
bool CalloutGenerator::NumberCallout(const CalloutPtr& callout, OperationPtr& operation) {
    const auto items = KernelItems();
    if (!items || !m_callouts->IsAllowed(callout)) return false;
    const SbomPtr instance = SbomInstanceOf(*callout);
    if (!instance) return false;
    unsigned int id = 0;
    if (items->GetItemIdForInstance(instance, id)) {
        if (!items->GetItemized(id)) return false;
    } else {
        if (!operation) operation = MakeOperation();
        id = m_itemList->AddInstance(instance, operation, false, "");
    }
    callout->SetItemId(id);
    return true;
}

}  // namespace zrcallouts
