#include "zritemlist/StructureItems.h"

namespace zritemlist {
namespace {

constexpr std::size_t kTop = static_cast<std::size_t>(-1);

struct Visit {
    StructureItems::SbomPtr instance;
    std::size_t above;
};

void PushChildren(std::vector<Visit>& pending, const StructureItems::SbomPtr& instance, std::size_t above) {
    const auto& children = instance->GetChildren();
    for (auto child = children.rbegin(); child != children.rend(); ++child)
        pending.push_back({*child, above});
}

}  // namespace

StructureItems::StructureItems(const SbomPtr& root, bool hierarchical) {
    std::vector<Visit> pending;
    if (!root->HasChildren()) pending.push_back({root, kTop});
    PushChildren(pending, root, kTop);
    while (!pending.empty()) {
        const Visit visit = std::move(pending.back());
        pending.pop_back();
        const bool isPart = visit.instance->IsWeld() || !visit.instance->HasChildren();
        std::size_t group = visit.above;
        if (isPart || hierarchical) group = Enter(visit.instance, visit.above);
        if (!isPart) PushChildren(pending, visit.instance, hierarchical ? group : kTop);
    }
}

std::size_t StructureItems::Enter(const SbomPtr& instance, std::size_t above) {
    const auto component = instance->GetComponentNode();
    // An instance of no known component is a part of its own.
    const void* part = component ? static_cast<const void*>(component.get()) : instance.get();
    const auto [entry, isNew] = m_groupOf.emplace(Key(above, part), m_groups.size());
    if (isNew) m_groups.emplace_back();
    m_groups[entry->second].push_back(instance);
    return entry->second;
}

}  // namespace zritemlist
