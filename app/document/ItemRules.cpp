#include "app/document/ItemRules.h"

#include <algorithm>

#include "app/document/InstancePattern.h"
#include "app/document/Kits.h"

namespace zrsheet {
namespace {

using zrk::illustration::SbomInstance;

bool IsShown(const Document& document, const SbomInstance& instance) {
    SbomInstance::InstanceSet parts;
    SbomInstance::InstanceSet listed;
    instance.GetEbomInstancesForWeld(parts, listed);
    parts.merge(listed);
    return std::any_of(parts.begin(), parts.end(), [&document](const auto& part) {
        Document::ShapePtr shape;
        document.Scene()->GetShapeInstance(part, shape);
        return shape && shape->IsVisible();
    });
}

bool HasProperty(const SbomInstance& instance, const std::string& rule) {
    const std::size_t sign = rule.find('=');
    du::Symbol value;
    return instance.FindProperty(du::Symbol::EMPTY, du::Symbol(rule.substr(0, sign)), du::Symbol::EMPTY,
                                 value) &&
           MatchesGlob(value.Text(), sign == std::string::npos ? "*" : rule.substr(sign + 1));
}

bool IsSkipped(const Document& document, const SbomInstance& instance, const ItemRules& rules) {
    const auto matches = [&instance](const std::string& pattern) {
        return MatchesGlob(ProductModel::NameOf(instance), pattern);
    };
    return (rules.skipsHidden && !IsShown(document, instance)) ||
           std::any_of(rules.skippedNames.begin(), rules.skippedNames.end(), matches) ||
           std::any_of(rules.skippedProperties.begin(), rules.skippedProperties.end(),
                       [&instance](const std::string& rule) { return HasProperty(instance, rule); });
}

bool IsOnLevel(const SbomInstance& instance, const SbomInstance* product, ItemLevel level) {
    if (level == ItemLevel::All) return true;
    if (level == ItemLevel::Leaves) return !instance.HasChildren() || instance.IsWeld();
    Document::SbomPtr parent;
    instance.GetParent(parent);
    return parent.get() == product;
}

/// An item counts as long as one of its instances does.
bool IsWanted(const Document& document, unsigned id, const ItemRules& rules) {
    const SbomInstance* product = document.Model().Root().get();
    const auto instances = document.Items()->GetOrderedInstances(id);
    return std::any_of(instances.begin(), instances.end(), [&](const auto& instance) {
        return !IsInKit(*document.Items(), *instance) && IsOnLevel(*instance, product, rules.level) &&
               !IsSkipped(document, *instance, rules);
    });
}

}  // namespace

void ItemRules::Skip(const std::string& rule) {
    if (rule == "hidden") {
        skipsHidden = true;
    } else {
        (rule.find('=') == std::string::npos ? skippedNames : skippedProperties).push_back(rule);
    }
}

bool ItemRules::IsAny() const {
    return level != ItemLevel::Leaves || skipsHidden || !skippedNames.empty() || !skippedProperties.empty();
}

void UpdateItems(Document& document, const ItemRules& rules) {
    const auto& items = document.Items();
    const zrk::Observable::UpdateGroup group{du::SmartPtr<zrk::Observable>(items)};
    document.ItemList().ListStructure(document.Model().Root(), rules.level != ItemLevel::Leaves, false,
                                      nullptr);
    for (const unsigned id : items->GetItemIds()) {
        const auto item = items->Capture(id);
        if (item && !item->isManual)
            document.ItemList().SetItemized(id, IsWanted(document, id, rules), nullptr);
    }
}

}  // namespace zrsheet
