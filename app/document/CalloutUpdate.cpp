#include "app/document/CalloutUpdate.h"

#include <algorithm>
#include <map>
#include <string>

#include "app/document/Kits.h"

namespace zrsheet {
namespace {

using zrannotations::Callout;

/// What callouts lead to: parts, and assemblies that parts stand for.
class Targets {
public:
    void Add(const Callout& callout) {
        const unsigned leaders = callout.GetLeaderLineCount(true);
        for (unsigned i = 0; i < leaders; ++i) {
            const auto assembly = callout.GetAssemblyInstanceAtPos(i);
            m_names.insert(assembly ? assembly->GetIdentifier().Text() : callout.GetShapeInstanceIdAtPos(i));
        }
    }

    void Add(const Document::SbomPtr& instance) { m_names.insert(instance->GetIdentifier().Text()); }

    [[nodiscard]] bool Has(const Document::SbomPtr& instance) const {
        return m_names.contains(instance->GetIdentifier().Text());
    }

    [[nodiscard]] bool HasAnyOf(const Targets& others) const {
        return std::any_of(others.m_names.begin(), others.m_names.end(),
                           [this](const std::string& name) { return m_names.contains(name); });
    }

private:
    std::set<std::string> m_names;
};

bool IsOnSymbol(const Callout& callout) {
    const auto shape = callout.GetShapeInstanceAtPos(0);
    du::SmartPtr<zrk::Instance> instance;
    if (shape) shape->GetInstance(instance);
    return instance && instance->Is3dSymbol();
}

bool IsByHand(const Callout& callout) {
    const bool isFree = callout.GetType() == zrannotations::CALLOUT_TYPE_FREE;
    const bool hasOwnLook =
        callout.IsCustomCallout() || !(callout.GetStyle() == zrannotations::CalloutStyle());
    return isFree || callout.IsCombined() || hasOwnLook || IsOnSymbol(callout);
}

}  // namespace

std::vector<CalloutUpdate::SbomPtr> CalloutUpdate::Missing(const std::vector<SbomPtr>& instances) const {
    const auto& engine = m_document.Engine();
    if (!engine->GetTemplate()->RequiresItemList()) return MissingOfTemplate(instances);
    std::map<unsigned, std::vector<SbomPtr>> byItem;
    std::set<SbomPtr> known;
    for (const SbomPtr& instance : instances) {
        unsigned id = 0;
        const SbomPtr standIn = StandIn(*m_document.Items(), instance);
        if (!standIn || !known.insert(standIn).second) continue;
        if (m_document.Items()->GetItemIdForInstance(standIn, id)) byItem[id].push_back(standIn);
    }
    std::vector<SbomPtr> missing;
    for (auto& [id, members] : byItem) {
        std::vector<CalloutPtr> callouts;
        engine->GetItemIdCallouts(id, callouts);
        Targets targets;
        for (const CalloutPtr& callout : callouts) targets.Add(*callout);
        std::erase_if(members, [&targets](const SbomPtr& instance) { return targets.Has(instance); });
        const bool isShared = m_document.Leaders() != LeaderChoice::PerInstance && callouts.size() == 1;
        if (!isShared) {
            missing.insert(missing.end(), members.begin(), members.end());
        } else if (!callouts.front()->IsCombined()) {
            std::erase_if(members, [this](const SbomPtr& instance) { return !IsShown(instance); });
            engine->UpdateItemGroupCalloutLeaders(id, {members.begin(), members.end()}, {},
                                                  m_document.Scene()->GetHistory().GetOpenOperation());
        }
    }
    return missing;
}

// Assemblies are left out: their parts have callouts of such a template, they have not.
std::vector<CalloutUpdate::SbomPtr> CalloutUpdate::MissingOfTemplate(
    const std::vector<SbomPtr>& instances) const {
    const auto definition = m_document.Engine()->GetTemplate();
    Targets targets;
    for (const CalloutPtr& callout : m_document.Callouts()) {
        if (callout->GetDefinition() == definition) targets.Add(*callout);
    }
    std::vector<SbomPtr> missing;
    for (const SbomPtr& instance : instances) {
        const bool isAssembly = instance->HasChildren() && !instance->IsWeld();
        if (!isAssembly && !targets.Has(instance)) missing.push_back(instance);
    }
    return missing;
}

std::vector<CalloutUpdate::ShapePtr> CalloutUpdate::Missing(const std::vector<ShapePtr>& symbols) const {
    std::set<ShapePtr> ledTo;
    for (const CalloutPtr& callout : m_document.Callouts()) {
        const unsigned leaders = callout->GetLeaderLineCount(false);
        for (unsigned i = 0; i < leaders; ++i) ledTo.insert(callout->GetShapeInstanceAtPos(i));
    }
    std::vector<ShapePtr> missing = symbols;
    std::erase_if(missing, [&ledTo](const ShapePtr& symbol) { return ledTo.contains(symbol); });
    return missing;
}

bool CalloutUpdate::IsShown(const SbomPtr& instance) const {
    zrk::illustration::SbomInstance::InstanceSet first;
    zrk::illustration::SbomInstance::InstanceSet second;
    instance->GetEbomInstancesForWeld(first, second);
    return std::any_of(first.begin(), first.end(), [this](const auto& engineering) {
        ShapePtr shape;
        m_document.Scene()->GetShapeInstance(engineering, shape);
        return shape && shape->IsVisible();
    });
}

std::vector<CalloutUpdate::CalloutPtr> CalloutUpdate::Automatic(const std::vector<SbomPtr>& instances) const {
    Targets meant;
    for (const SbomPtr& instance : instances) meant.Add(instance);
    std::vector<CalloutPtr> automatic;
    for (const CalloutPtr& callout : m_document.Callouts()) {
        if (IsByHand(*callout) || m_document.IsPlacedByHand(callout)) continue;
        Targets targets;
        targets.Add(*callout);
        if (instances.empty() || meant.HasAnyOf(targets)) automatic.push_back(callout);
    }
    return automatic;
}

std::vector<CalloutUpdate::CalloutPtr> CalloutUpdate::Orphaned() const {
    std::vector<CalloutPtr> orphaned = m_document.Callouts();
    std::erase_if(orphaned, [this](const CalloutPtr& callout) { return !IsOrphaned(*callout); });
    return orphaned;
}

bool CalloutUpdate::IsOrphaned(const Callout& callout) const {
    unsigned id = 0;
    if (callout.GetItemId(id) && !m_document.Items()->Capture(id)) return true;
    const unsigned leaders = callout.GetLeaderLineCount(true);
    for (unsigned i = 0; i < leaders; ++i) {
        const auto part = callout.GetShapeInstanceAtPos(i);
        du::SmartPtr<zrk::Instance> instance;
        if (part) part->GetInstance(instance);
        ShapePtr shape;
        if (instance) m_document.Scene()->GetShapeInstance(instance, shape);
        if (shape) return false;
    }
    return leaders > 0;
}

}  // namespace zrsheet
