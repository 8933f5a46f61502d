// From a selection to callouts: the categories its parts fall into, and the callouts of each.

#include <algorithm>
#include <utility>

#include "callouts/generator/CalloutGenerator.h"
#include "zrannotations/CalloutLeader.h"
#include "zrannotations/LabelContent.h"
#include "zrk/illustration/ItemsList.h"
#include "zrk/object/Checked.h"

namespace zrcallouts {

using zrannotations::Callout;

/// Tells the caller's event how far a run is: before each hundredth item of the selection, counted over all
/// passes.
class CalloutGenerator::ProgressReport {
public:
    ProgressReport(const du::SmartPtr<zrk::AsyncEvent>& event, std::size_t passes, std::size_t itemsPerPass)
        : m_event(event),
          m_itemsPerPass(itemsPerPass),
          m_total(static_cast<double>(passes) * static_cast<double>(itemsPerPass)) {}

    void BeginPass() {
        const std::size_t end = m_counter + m_itemsPerPass;
        const std::size_t first = (m_counter + kStep - 1) / kStep * kStep;
        for (std::size_t item = first; m_event && item < end; item += kStep) {
            m_event->Progress(static_cast<unsigned char>(static_cast<double>(item + 1) / m_total * 100.0));
        }
        m_counter = end;
    }

private:
    static constexpr std::size_t kStep = 100;

    const du::SmartPtr<zrk::AsyncEvent>& m_event;
    const std::size_t m_itemsPerPass;
    const double m_total;
    std::size_t m_counter = 0;
};

unsigned int CalloutGenerator::ComputeNumberOfVariants(const Selection& selection,
                                                       const OperationPtr& operation) {
    if (m_requiresItemList && !m_itemList) return 0;
    if (m_requiresPropertyVisitor) {
        zrannotations::TAnnotation::Contents contents;
        if (const auto definition = m_callouts->GetTemplate()) definition->GetTextContent(contents);
        for (const auto& content : contents) {
            if (content->Kind() != 1) continue;
            m_propertyGroups.emplace_back(content->TextOrGroup());
            m_propertyNames.emplace_back(content->PropertyName());
        }
    }
    const SelectionWalk walk(KernelItems());
    for (const auto& item : selection) IncrementNumberOfVariants(walk.Represent(item), operation);
    if (m_requiresPropertyVisitor) return static_cast<unsigned int>(m_propertyVariants.size());
    if (m_requiresItemList) return static_cast<unsigned int>(m_itemIdVariants.size());
    return m_plainCategory ? static_cast<unsigned int>(m_instanceVariants.size()) : 0;
}

void CalloutGenerator::IncrementNumberOfVariants(const SbomPtr& instance, const OperationPtr& operation) {
    SelectionWalk(KernelItems()).Walk(instance, [&](const SbomPtr& part, const InstanceSet& gathered) {
        if (m_requiresPropertyVisitor && !gathered.empty()) {
            if (const auto value = LookUpProperties(part)) m_propertyVariants.insert(value->GetSymbol());
        } else if (m_requiresItemList) {
            CountItems(part, gathered, operation);
        } else if (m_plainCategory && !gathered.empty()) {
            if (const auto& node = (*gathered.begin())->GetComponentNode()) m_instanceVariants.insert(node);
        }
    });
}

du::SmartPtr<zrk::PropertyValue> CalloutGenerator::LookUpProperties(const SbomPtr& instance) const {
    return instance->LookUpProperty(m_propertyGroups, m_propertyNames, du::Symbol::EMPTY);
}

void CalloutGenerator::CountItems(const SbomPtr& instance, const InstanceSet& gathered,
                                  const OperationPtr& operation) {
    const auto items = KernelItems();
    if (!items) return;
    for (const auto& candidate : SelectionWalk::Candidates(instance, gathered)) {
        unsigned int id = 0;
        if (items->GetItemIdForInstance(candidate, id)) {
            if (items->GetItemized(id)) m_itemIdVariants.insert(id);
        } else if (candidate == instance) {
            m_itemIdVariants.insert(m_itemList->AddInstance(candidate, operation, m_manualCreation, ""));
        }
    }
}

// One walk files every instance under its key; walking the selection again for each key would give the same
// runs.
CalloutGenerator::Runs CalloutGenerator::CollectRuns(const Selection& selection) const {
    Runs runs;
    const SelectionWalk walk(KernelItems());
    for (const auto& item : selection) {
        walk.Walk(walk.Represent(item), [&](const SbomPtr& part, const InstanceSet& gathered) {
            FileInstance(part, gathered, runs);
        });
    }
    return runs;
}

void CalloutGenerator::FileInstance(const SbomPtr& instance, const InstanceSet& gathered, Runs& runs) const {
    if (m_plainCategory && !gathered.empty()) {
        runs.byComponent[(*gathered.begin())->GetComponentNode()].insert(instance);
    } else if (m_requiresPropertyVisitor && !gathered.empty()) {
        if (const auto value = LookUpProperties(instance))
            runs.byProperty[value->GetSymbol()].insert(instance);
    } else if (const auto items = m_requiresItemList ? KernelItems() : nullptr) {
        for (const auto& candidate : SelectionWalk::Candidates(instance, gathered)) {
            unsigned int id = 0;
            if (items->GetItemIdForInstance(candidate, id) && items->GetItemized(id))
                runs.byItem[id].insert(candidate);
        }
    }
}

CalloutGenerator::Run CalloutGenerator::TakeCurrentRun(Runs& runs) const {
    const auto take = [](auto& byKey, const auto& key) {
        const auto run = byKey.find(key);
        return run != byKey.end() ? std::move(run->second) : Run();
    };
    if (CompletedCategoryIterators()) return {};
    if (m_plainCategory) return take(runs.byComponent, *m_instanceIt);
    if (m_requiresPropertyVisitor) return take(runs.byProperty, *m_propertyIt);
    return take(runs.byItem, *m_itemIdIt);
}

void CalloutGenerator::AddOnSelected(const Selection& selection, const du::SmartPtr<zrk::AsyncEvent>& event) {
    if (!m_callouts) return;
    const OperationPtr operation = MakeOperation();
    DoOrWithdraw(operation, [&] { AddRuns(selection, event, operation); });
}

void CalloutGenerator::AddRuns(const Selection& selection, const du::SmartPtr<zrk::AsyncEvent>& event,
                               const OperationPtr& operation) {
    InitializeSelected(selection, operation);
    if (m_variantsCount == 0) return;
    Runs runs = CollectRuns(selection);
    ProgressReport progress(event, m_variantsCount, selection.size());
    for (unsigned int pass = 0; pass < m_variantsCount; ++pass) {
        progress.BeginPass();
        if (event && event->IsCancelled()) {
            Withdraw(operation);
            return;
        }
        AddOnSelectedCategory(TakeCurrentRun(runs));
        NextCategory();
    }
    PerformLayout();
    ShowCallouts(m_createdCallouts, operation);
    if (operation) zrk::RecordOperation(operation);
}

void CalloutGenerator::CreateManuallyOnSelected(const Selection& selection, OperationPtr& operation) {
    if (!m_callouts) return;
    if (!operation) operation = MakeOperation();
    m_requiresItemList = true;
    m_manualCreation = true;
    m_variantsCount = ComputeNumberOfVariants(selection, operation);
    InitCategoryIterators();
    if (m_variantsCount == 0) return;
    Runs runs = CollectRuns(selection);
    for (unsigned int pass = 0; pass < m_variantsCount; ++pass) {
        std::vector<CalloutPtr> created;
        AddOnSelectedCategory(TakeCurrentRun(runs), created);
        for (const auto& callout : created) {
            if (!m_callouts->IsAllowed(callout)) continue;
            m_createdCallouts.insert(callout);
            m_callouts->RequestAnchorPick(callout);
        }
        NextCategory();
    }
    PerformLayout();
}

void CalloutGenerator::AddOnSelectedCategory(const Run& run) {
    std::vector<CalloutPtr> created;
    AddOnSelectedCategory(run, created);
    FinalizeCallouts(created);
}

void CalloutGenerator::AddOnSelectedCategory(const Run& run, std::vector<CalloutPtr>& created) {
    if (run.empty()) return;
    const bool combine = m_callouts->GetCombineForSamePart();
    const bool drawOne = m_callouts->GetDrawOneForSamePart();
    CalloutPtr current;
    for (const auto& instance : run) {
        Target target;
        if (!instance || !FindTarget(instance, target)) continue;
        if (current && (combine || drawOne)) {
            AddLeader(*current, target, drawOne);
            continue;
        }
        const CalloutPtr callout = MakeCallout(target);
        if (!callout) continue;
        created.push_back(callout);
        if (!current) current = callout;
    }
}

/// What a callout for the instance leads to; false when nothing of it can be seen in the scene.
bool CalloutGenerator::FindTarget(const SbomPtr& instance, Target& target) {
    InstanceSet first;
    InstanceSet second;
    instance->GetEbomInstancesForWeld(first, second);
    if (first.empty()) return false;
    const bool leafOrWeld = instance->IsWeld() || !instance->HasChildren();
    const auto valid = FindValidInstance(first, second, leafOrWeld);
    const auto scene = du::DynamicCast<zrk::ShapeScene>(m_scene);
    if (!valid || !scene) return false;
    scene->GetShapeInstance(valid, target.shapeInstance);
    if (first.size() + second.size() != 1) target.baseInstance = instance;
    return static_cast<bool>(target.shapeInstance);
}

/// Null when the part has no point to lead to.
CalloutGenerator::CalloutPtr CalloutGenerator::MakeCallout(const Target& target) const {
    CalloutPtr callout(zrk::Checked(new Callout));
    if (!callout->Initialize(m_callouts->GetTemplate(), target.shapeInstance, false, target.baseInstance))
        return nullptr;
    if (m_requiresItemList && m_itemIdIt != m_itemIdEnd) callout->SetItemId(*m_itemIdIt);
    return callout;
}

bool CalloutGenerator::AddLeader(Callout& callout, const Target& target, bool isCollapsed) const {
    dg::DPoint3D anchor;
    if (!callout.CalculateAnchor(target.shapeInstance, anchor)) return false;
    const auto leader = callout.CreateCalloutLeader(anchor, target.shapeInstance, target.baseInstance);
    if (!leader) return false;
    if (isCollapsed) leader->m_collapsed = true;
    callout.ConnectLeader(leader);
    return true;
}

bool CalloutGenerator::IsVisiblePart(const du::SmartPtr<zrk::Instance>& instance) const {
    const auto scene = du::DynamicCast<zrk::ShapeScene>(m_scene);
    du::SmartPtr<zrk::ShapeInstance> part;
    if (scene) scene->GetShapeInstance(instance, part);
    return part && part->IsVisible();
}

// Among the listed members of a weld an itemized one is preferred.
du::SmartPtr<zrk::Instance> CalloutGenerator::FindValidInstance(const InstanceSet& first,
                                                                const InstanceSet& second, bool leafOrWeld) {
    const auto scene = du::DynamicCast<zrk::ShapeScene>(m_scene);
    if (!scene) return nullptr;
    for (const auto& instance : first) {
        du::SmartPtr<zrk::ShapeInstance> part;
        scene->GetShapeInstance(instance, part);
        if (!part || !part->IsVisible()) continue;
        if (!(instance->GetShapeSourceBBox() == dg::FBox::EMPTY) || part->GetShape()) return instance;
    }
    const auto items = KernelItems();
    du::SmartPtr<zrk::Instance> fallback;
    if (!leafOrWeld || !items) return fallback;
    for (const auto& instance : second) {
        unsigned int id = 0;
        if (!IsVisiblePart(instance)) continue;
        if (!items->GetItemIdForInstance(SbomPtr(instance->GetSbomInstance()), id)) continue;
        if (items->GetItemized(id)) return instance;
        if (!fallback) fallback = instance;
    }
    return fallback;
}

}  // namespace zrcallouts
