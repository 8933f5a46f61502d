#include "app/sheet/SheetItems.h"

#include <utility>

#include "app/document/Kits.h"
#include "app/document/ProductModel.h"

namespace zrsheet {
namespace {

SheetItem ItemOf(const zrk::illustration::ItemsList& items, unsigned id, bool isHierarchical) {
    SheetItem item;
    bool isCustom = false;
    item.itemId = id;
    items.GetLabel(id, item.label, isCustom);
    item.quantity = items.GetQuantity(id);
    item.tag = items.GetItemTag(id);
    if (isHierarchical) item.level = static_cast<unsigned>(items.GetHierarchyIndex(id).size() - 1);
    const auto instances = items.GetOrderedInstances(id);
    if (instances.empty()) return item;
    item.name = ProductModel::NameOf(*instances.front());
    for (const auto& [key, value] : instances.front()->GetProperties()) {
        item.properties[std::get<1>(key).Text()] = value.Text();
    }
    for (const auto& instance : instances) item.instances.push_back(instance->GetIdentifier().Text());
    return item;
}

bool IsContentOfKit(const zrk::illustration::ItemsList& items, unsigned id) {
    const auto instances = items.GetOrderedInstances(id);
    return !instances.empty() && IsInKit(items, *instances.front());
}

}  // namespace

std::vector<SheetItem> ListedItems(const zrk::illustration::ItemsList& items) {
    zrk::illustration::ItemsList::Numbering numbering;
    items.GetNumberingSettings(numbering);
    std::vector<SheetItem> listed;
    for (const unsigned id : items.GetItemIds()) {
        SheetItem item = ItemOf(items, id, numbering.hierarchical);
        const bool isContent = item.label.empty() && IsContentOfKit(items, id);
        if (isContent && !numbering.hierarchical) item.level = 1;
        if (isContent || !item.label.empty()) listed.push_back(std::move(item));
    }
    return listed;
}

}  // namespace zrsheet
