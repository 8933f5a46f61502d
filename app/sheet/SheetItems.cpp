#include "app/sheet/SheetItems.h"

#include <algorithm>
#include <limits>
#include <map>
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

/// Where items belong among the others.
class Places {
public:
    Places(const zrk::illustration::ItemsList& items, bool isHierarchical)
        : m_items(items), m_isHierarchical(isHierarchical) {}

    /// The numbers of the items above it, and its own; what has none comes last.
    const std::vector<unsigned>& Of(unsigned id) {
        const auto [place, isNew] = m_known.try_emplace(id);
        if (!isNew) return place->second;
        const auto item = m_items.Capture(id);
        if (item && item->parent != 0 && m_isHierarchical) place->second = Of(item->parent);
        const unsigned number = item ? item->number : 0;
        place->second.push_back(number == 0 ? std::numeric_limits<unsigned>::max() : number);
        return place->second;
    }

private:
    const zrk::illustration::ItemsList& m_items;
    bool m_isHierarchical;
    std::map<unsigned, std::vector<unsigned>> m_known;
};

/// A row, and where it belongs: the contents of a kit stay below it.
struct Row {
    SheetItem item;
    std::vector<unsigned> numbers;
};

std::vector<SheetItem> Sorted(std::vector<Row> rows) {
    std::stable_sort(rows.begin(), rows.end(),
                     [](const Row& a, const Row& b) { return a.numbers < b.numbers; });
    std::vector<SheetItem> sorted;
    sorted.reserve(rows.size());
    for (Row& row : rows) sorted.push_back(std::move(row.item));
    return sorted;
}

}  // namespace

std::vector<SheetItem> ListedItems(const zrk::illustration::ItemsList& items) {
    zrk::illustration::ItemsList::Numbering numbering;
    items.GetNumberingSettings(numbering);
    std::vector<Row> rows;
    Places places(items, numbering.hierarchical);
    std::vector<unsigned> ofKit;
    for (const unsigned id : items.GetItemIds()) {
        SheetItem item = ItemOf(items, id, numbering.hierarchical);
        const bool isContent = item.label.empty() && IsContentOfKit(items, id);
        if (isContent && !numbering.hierarchical) item.level = 1;
        if (!isContent) ofKit = places.Of(id);
        if (isContent || !item.label.empty()) rows.push_back({std::move(item), ofKit});
    }
    return Sorted(std::move(rows));
}

}  // namespace zrsheet
