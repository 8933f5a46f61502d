#include "app/sheet/PartIndex.h"

#include <string>
#include <utility>

namespace zrsheet {
namespace {

using SbomPtr = ProductModel::SbomPtr;

std::string NameOf(const zrk::Instance& instance) {
    du::SmartPtr<zrk::ComponentInstance> component;
    instance.GetComponentInstance(component);
    du::Symbol name;
    component->GetID(name);
    return name.Text();
}

}  // namespace

PartIndex::PartIndex(const Document& document) : m_document(document) {
    std::map<unsigned, int> counts;
    for (const SbomPtr& instance : document.Model().Instances()) {
        if (instance->HasChildren()) continue;
        SheetPart part;
        part.hasItem = FindItem(instance, part.itemId);
        part.id = "part-" + std::to_string(part.itemId) + "-" + std::to_string(++counts[part.itemId]);
        if (part.hasItem) {
            bool isCustom = false;
            document.Items()->GetLabel(part.itemId, part.label, isCustom);
        }
        part.name = ProductModel::NameOf(*instance);
        part.instance = instance->GetIdentifier().Text();
        m_parts.emplace(instance->GetEbomInstance().get(), std::move(part));
    }
}

/// Its own, or that of the assembly around it.
bool PartIndex::FindItem(SbomPtr instance, unsigned& id) const {
    while (instance) {
        if (m_document.Items()->GetItemIdForInstance(instance, id)) return true;
        SbomPtr parent;
        instance->GetParent(parent);
        instance = parent;
    }
    id = 0;
    return false;
}

SheetPart PartIndex::Of(const zrk::ShapeInstance& part) const {
    du::SmartPtr<zrk::Instance> instance;
    part.GetInstance(instance);
    const auto found = m_parts.find(instance.get());
    if (found != m_parts.end()) return found->second;
    SheetPart symbol;
    symbol.name = NameOf(*instance);
    symbol.id = symbol.name;
    return symbol;
}

}  // namespace zrsheet
