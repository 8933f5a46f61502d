#include "callouts/generator/SelectionWalk.h"

#include <utility>

namespace zrcallouts {
namespace {

using SbomPtr = SelectionWalk::SbomPtr;
using InstanceSet = SelectionWalk::InstanceSet;

bool IsAssembly(const SbomPtr& instance) { return !instance->IsWeld() && instance->HasChildren(); }

InstanceSet Gather(const SbomPtr& instance) {
    InstanceSet gathered;
    InstanceSet listedMembers;
    if (instance->IsWeld()) {
        instance->GetEbomInstancesForWeld(gathered, listedMembers);
    } else if (!instance->HasChildren() && !instance->IsWeldMember() && instance->GetEbomInstance()) {
        gathered.insert(instance->GetEbomInstance());
    }
    return gathered;
}

}  // namespace

SelectionWalk::SelectionWalk(du::SmartPtr<zrk::illustration::ItemsList> items) : m_items(std::move(items)) {}

bool SelectionWalk::IsListed(const SbomPtr& instance) const {
    unsigned int id = 0;
    return m_items && m_items->GetItemIdForInstance(instance, id);
}

SbomPtr SelectionWalk::Represent(const SelectionItemPtr& item) const {
    const SbomPtr instance = item ? item->GetSbomInstance() : SbomPtr();
    if (!instance) return nullptr;
    if (instance->IsWeldMember()) return instance->GetTopWeld();
    if (!UseParent(instance)) return instance;
    SbomPtr parent;
    instance->GetParent(parent);
    return parent;
}

bool SelectionWalk::UseParent(const SbomPtr& instance) const {
    unsigned int id = 0;
    if (!m_items || !m_items->GetItemIdForInstance(instance, id) || m_items->GetItemized(id)) return false;
    SbomPtr parent;
    instance->GetParent(parent);
    return parent && m_items->GetItemIdForInstance(parent, id) && m_items->GetItemized(id);
}

// On an explicit stack, for structures may be deep; an assembly comes up a second time when all below it is
// done.
void SelectionWalk::Walk(const SbomPtr& instance, const Receiver& receive) const {
    struct Visit {
        SbomPtr instance;
        bool isDone;
    };
    std::vector<Visit> pending;
    if (instance) pending.push_back({instance, !IsAssembly(instance)});
    while (!pending.empty()) {
        if (pending.back().isDone) {
            const SbomPtr done = std::move(pending.back().instance);
            pending.pop_back();
            receive(done, Gather(done));
            continue;
        }
        pending.back().isDone = true;
        const SbomPtr assembly = pending.back().instance;
        const auto& children = assembly->GetChildren();
        for (auto child = children.rbegin(); child != children.rend(); ++child) {
            if (IsListed(*child)) pending.push_back({*child, !IsAssembly(*child)});
        }
    }
}

std::set<SbomPtr> SelectionWalk::Candidates(const SbomPtr& instance, const InstanceSet& gathered) {
    std::set<SbomPtr> candidates;
    if (!instance->IsWeldMember()) candidates.insert(instance);
    for (const auto& engineering : gathered) {
        const SbomPtr sbom(engineering->GetSbomInstance());
        if (sbom && !sbom->IsWeldMember()) candidates.insert(sbom);
    }
    return candidates;
}

}  // namespace zrcallouts
