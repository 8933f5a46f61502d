// Callouts for items, for 3-D symbols and for copy steps, and the generator's side of the item list.

#include <map>
#include <utility>

#include "callouts/generator/AnnotationVisitor.h"
#include "callouts/generator/CalloutGenerator.h"
#include "dp/ZRTracer.h"
#include "zrannotations/CalloutTemplates.h"
#include "zrk/annotation/AnnoSet.h"
#include "zrk/illustration/ItemsList.h"

namespace zrcallouts {
namespace {

constexpr int kTraceLevel = 3;

}  // namespace

void CalloutGenerator::AddOnItemIds(const std::vector<unsigned int>& itemIds, const std::string& templateId,
                                    const OperationPtr& operation) {
    if (!m_itemList || itemIds.empty() || !m_callouts) return;
    const auto definition = zrannotations::FindCalloutTemplate(templateId);
    if (definition) m_callouts->SetTemplate(definition);
    std::vector<CalloutPtr> existing;
    m_callouts->GetItemIdCallouts(itemIds, existing);
    m_requiresItemList = true;
    m_itemIdVariants.insert(itemIds.begin(), itemIds.end());
    InitCategoryIterators();
    DoOrWithdraw(nullptr, [&] {
        while (!CompletedCategoryIterators()) {
            AddOnSelectedCategory(RunOfItem(*m_itemIdIt));
            NextCategory();
        }
        PerformLayout();
        if (!m_createdCallouts.empty()) ShowAndRecord(operation);
    });
    if (m_createdCallouts.empty() && definition) SwitchTemplate(existing, definition);
}

// Members of a weld are called out through the weld.
CalloutGenerator::Run CalloutGenerator::RunOfItem(unsigned int itemId) const {
    Run instances;
    Run run;
    KernelItems()->GetInstances(itemId, instances);
    for (const auto& instance : instances) {
        if (instance->IsWeldMember()) continue;
        dp::ZRTracer("zrcallouts", "CalloutGenerator")(
            kTraceLevel, "CalloutGenerator::AddOnItemIds() Insert sBOM instance %s",
            instance->GetName().c_str());
        run.insert(instance);
    }
    return run;
}

void CalloutGenerator::ShowAndRecord(const OperationPtr& operation) {
    if (operation) {
        ShowCallouts(m_createdCallouts, operation);
        return;
    }
    const OperationPtr own = MakeOperation();
    ShowCallouts(m_createdCallouts, own);
    zrk::RecordOperation(own);
}

void CalloutGenerator::SwitchTemplate(const std::vector<CalloutPtr>& callouts,
                                      const du::SmartPtr<zrannotations::TAnnotation>& definition) const {
    for (const auto& callout : callouts) {
        callout->UpdateDefinition(definition);
        m_callouts->SetCalloutText(callout);
    }
}

void CalloutGenerator::AddOnSymbols(const std::vector<du::SmartPtr<zrk::Instance>>& symbols) {
    const auto scene = du::DynamicCast<zrk::ShapeScene>(m_scene);
    if (symbols.empty() || !m_callouts || !scene) return;
    AnnotationVisitor visitor;
    du::SmartPtr<zrk::AnnoSet> annoSet;
    scene->GetAnnoSet(annoSet);
    annoSet->Visit(visitor);
    std::map<du::SmartPtr<zrk::Shape>, std::vector<Symbol>> groups;
    for (const auto& symbol : symbols) {
        du::SmartPtr<zrk::ShapeInstance> shapeInstance;
        if (symbol) scene->GetShapeInstance(symbol, shapeInstance);
        if (!shapeInstance || !shapeInstance->GetShape()) continue;
        groups[shapeInstance->GetShape()].push_back({shapeInstance, visitor.GetSymbolId(symbol)});
    }
    std::vector<CalloutPtr> created;
    for (const auto& [shape, group] : groups) CallOutSymbols(group, created);
    if (created.empty()) return;
    const OperationPtr operation = MakeOperation();
    DoOrWithdraw(operation, [&] {
        FinalizeCallouts(created);
        PerformLayout();
        ShowCallouts(created, operation);
    });
    zrk::RecordOperation(operation);
}

void CalloutGenerator::CallOutSymbols(const std::vector<Symbol>& group,
                                      std::vector<CalloutPtr>& created) const {
    const bool drawOne = m_callouts->GetDrawOneForSamePart();
    const bool isShared = drawOne || m_callouts->GetCombineForSamePart();
    CalloutPtr current;
    for (const auto& symbol : group) {
        const Target target{symbol.shapeInstance, nullptr};
        if (current && isShared) {
            if (AddLeader(*current, target, drawOne))
                current->SetSymbolIdAtPos(symbol.id, current->GetLeaderLineCount(false) - 1);
            continue;
        }
        const CalloutPtr callout = MakeCallout(target);
        if (!callout) continue;
        callout->SetSymbolIdAtPos(symbol.id, 0);
        created.push_back(callout);
        if (!current) current = callout;
    }
}

// What the passes would collect goes nowhere: a copy takes part in the counting, which may list new parts,
// and in nothing else.
void CalloutGenerator::AddOnCopySteps(const Selection& selection, CalloutPtr&,
                                      const OperationPtr& operation) {
    m_requiresItemList = true;
    m_variantsCount = ComputeNumberOfVariants(selection, operation);
    InitCategoryIterators();
    for (unsigned int pass = 0; pass < m_variantsCount; ++pass) NextCategory();
}

unsigned int CalloutGenerator::AddToItemList(const SbomPtr& instance, bool manual, const std::string& label,
                                             OperationPtr& operation) {
    return m_itemList ? m_itemList->AddInstance(instance, operation, manual, label) : 0;
}

void CalloutGenerator::RemoveFromItemIds(const std::vector<unsigned int>& itemIds,
                                         const OperationPtr& operation) {
    if (!m_callouts || itemIds.empty()) return;
    for (const unsigned int id : itemIds) m_callouts->OnItemRemoved(id, operation);
    if (m_view) m_view->SetDirty(true);
}

void CalloutGenerator::RemoveFromItemList(unsigned int itemId, OperationPtr& operation) {
    if (m_itemList) m_itemList->DeleteItem(itemId, operation);
}

void CalloutGenerator::GetItemLabel(unsigned int itemId, std::string& label, bool& isCustom) const {
    if (m_itemList) m_itemList->GetItemLabel(itemId, label, isCustom);
}

bool CalloutGenerator::GetMatchingItem(const SbomPtr& instance, unsigned int& itemId) const {
    return m_itemList && m_itemList->GetMatchingItem(instance, itemId);
}

}  // namespace zrcallouts
