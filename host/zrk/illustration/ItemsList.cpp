#include "zrk/illustration/ItemsList.h"

#include <algorithm>
#include <utility>

namespace zrk::illustration {
namespace {

enum Event { kItemAdded, kItemRemoved, kContentChanged, kSettingsChanged, kListCleared };

}  // namespace

ItemsList::ItemsList() = default;

ItemsList::~ItemsList() {
    for (const auto& observer : m_observers.Snapshot()) observer->OnDestroy();
}

bool ItemsList::GetItemIdForInstance(const SbomPtr& instance, unsigned& id) const {
    const std::lock_guard hold(m_mutex);
    const auto entry = m_itemOfInstance.find(instance.get());
    if (entry == m_itemOfInstance.end()) return false;
    id = entry->second;
    return true;
}

bool ItemsList::GetItemIdForComponent(const du::SmartPtr<zrk::ComponentNode>& component, unsigned& id) const {
    const std::lock_guard hold(m_mutex);
    const auto entry = m_itemsOfComponent.find(component.get());
    if (!component || entry == m_itemsOfComponent.end()) return false;
    id = entry->second.begin()->first;
    return true;
}

bool ItemsList::GetItemized(unsigned id) const {
    const std::lock_guard hold(m_mutex);
    const auto entry = m_items.find(id);
    return entry != m_items.end() && entry->second.isItemized;
}

bool ItemsList::GetLabel(unsigned id, std::string& label, bool& isCustom) const {
    const std::lock_guard hold(m_mutex);
    const auto entry = m_items.find(id);
    if (entry == m_items.end()) return false;
    label = LabelOf(entry->second);
    isCustom = !entry->second.customLabel.empty();
    return true;
}

std::string ItemsList::LabelOf(const Item& item) const {
    if (!item.customLabel.empty()) return item.customLabel;
    if (item.number == 0) return {};
    const auto parent = m_items.find(LevelOf(item));
    return m_numbering.Write(item.number, parent != m_items.end() ? LabelOf(parent->second) : std::string());
}

int ItemsList::GetQuantity(unsigned id) const {
    const std::lock_guard hold(m_mutex);
    const auto entry = m_items.find(id);
    return entry != m_items.end() ? static_cast<int>(entry->second.instances.size()) : 0;
}

std::string ItemsList::GetItemTag(unsigned id) const {
    const std::lock_guard hold(m_mutex);
    const auto entry = m_items.find(id);
    return entry != m_items.end() ? entry->second.tag : std::string();
}

void ItemsList::GetInstances(unsigned id, std::set<SbomPtr>& out) const {
    for (const auto& instance : GetOrderedInstances(id)) out.insert(instance);
}

std::vector<ItemsList::SbomPtr> ItemsList::GetOrderedInstances(unsigned id) const {
    const std::lock_guard hold(m_mutex);
    const auto entry = m_items.find(id);
    return entry != m_items.end() ? entry->second.instances : std::vector<SbomPtr>();
}

unsigned ItemsList::GetIndex(unsigned id) const {
    const std::lock_guard hold(m_mutex);
    return m_ranks.CountBelow(id);
}

std::vector<unsigned> ItemsList::GetHierarchyIndex(unsigned id) const {
    std::vector<unsigned> index;
    const std::lock_guard hold(m_mutex);
    for (auto entry = m_items.find(id); entry != m_items.end(); entry = m_items.find(entry->second.parent)) {
        index.push_back(m_ranks.CountBelow(entry->first));
    }
    std::reverse(index.begin(), index.end());
    return index;
}

void ItemsList::GetNumberingSettings(Numbering& out) const {
    const std::lock_guard hold(m_mutex);
    out = m_numbering;
}

std::vector<unsigned> ItemsList::GetItemIds() const {
    std::vector<unsigned> ids;
    const std::lock_guard hold(m_mutex);
    ids.reserve(m_items.size());
    for (const auto& [id, item] : m_items) ids.push_back(id);
    return ids;
}

void ItemsList::SetIndicated(unsigned id, bool indicated) {
    const std::lock_guard hold(m_mutex);
    if (!indicated) {
        m_indicated.erase(id);
    } else {
        m_indicated.insert(id);
    }
}

bool ItemsList::IsIndicated(unsigned id) const {
    const std::lock_guard hold(m_mutex);
    return m_indicated.count(id) != 0 && m_items.count(id) != 0;
}

void ItemsList::Take(unsigned id, const SbomPtr& instance) {
    if (!instance || !m_itemOfInstance.emplace(instance.get(), id).second) return;
    instance->SetCarriesItem(true);
    m_items[id].instances.push_back(instance);
    if (const auto component = instance->GetComponentNode()) ++m_itemsOfComponent[component.get()][id];
}

void ItemsList::Drop(unsigned id, const SbomPtr& instance) {
    m_itemOfInstance.erase(instance.get());
    instance->SetCarriesItem(false);
    const auto component = instance->GetComponentNode();
    const auto items = m_itemsOfComponent.find(component.get());
    if (!component || items == m_itemsOfComponent.end()) return;
    const auto count = items->second.find(id);
    if (count != items->second.end() && --count->second == 0) items->second.erase(count);
    if (items->second.empty()) m_itemsOfComponent.erase(items);
}

/// What has none of its own cannot stand in front of others' numbers.
bool ItemsList::HasLabel(unsigned id) const {
    const auto entry = m_items.find(id);
    return entry != m_items.end() && (entry->second.isItemized || !entry->second.customLabel.empty());
}

unsigned ItemsList::ParentItemOf(unsigned id, const Item& item) const {
    SbomPtr above;
    if (!item.instances.empty()) item.instances.front()->GetParent(above);
    while (above) {
        const auto entry = m_itemOfInstance.find(above.get());
        // An item may hold an assembly and a part of it: it is not its own parent.
        if (entry != m_itemOfInstance.end() && entry->second != id && HasLabel(entry->second))
            return entry->second;
        SbomPtr next;
        above->GetParent(next);
        above = next;
    }
    return 0;
}

unsigned ItemsList::GetParentItem(const std::vector<SbomPtr>& instances) const {
    Item item;
    item.instances = instances;
    const std::lock_guard hold(m_mutex);
    return ParentItemOf(0, item);
}

unsigned ItemsList::GetLastNumber(unsigned parent) const {
    const std::lock_guard hold(m_mutex);
    return m_numbers.GetLast(m_numbering.hierarchical ? parent : 0);
}

void ItemsList::SetLastNumber(unsigned parent, unsigned last) {
    const std::lock_guard hold(m_mutex);
    m_numbers.SetLast(m_numbering.hierarchical ? parent : 0, last);
}

void ItemsList::GiveNumber(Item& item) {
    if (!item.isItemized || !item.customLabel.empty() || item.number != 0) return;
    const unsigned level = LevelOf(item);
    item.number = level == 0 ? m_numbers.Give(level, m_numbering.start, m_numbering.increment)
                             : m_numbers.Give(level, 1, 1);
}

void ItemsList::KeepNumber(Item& item) {
    if (item.number == 0 || m_numbers.Take(LevelOf(item), item.number)) return;
    item.number = 0;
    GiveNumber(item);
}

void ItemsList::FreeNumber(const Item& item) {
    if (item.number != 0) m_numbers.Free(LevelOf(item), item.number);
}

void ItemsList::GiveNumbersAnew(const std::vector<unsigned>& order) {
    m_numbers = {};
    for (auto& [id, item] : m_items) {
        if (!item.instances.empty()) item.parent = ParentItemOf(id, item);
        if (!item.isLocked) item.number = 0;
        if (item.number != 0) m_numbers.Reserve(LevelOf(item), item.number);
    }
    for (const unsigned id : order) {
        const auto entry = m_items.find(id);
        if (entry != m_items.end()) GiveNumber(entry->second);
    }
    for (auto& [id, item] : m_items) GiveNumber(item);
}

void ItemsList::Insert(unsigned id, Item item) {
    std::vector<SbomPtr> instances;
    instances.swap(item.instances);
    m_items[id] = std::move(item);
    m_lastId = std::max(m_lastId, id);
    m_ranks.Insert(id);
    for (const auto& instance : instances) Take(id, instance);
}

unsigned ItemsList::AddItem(const std::vector<SbomPtr>& instances, const std::string& label, bool itemized,
                            bool manual) {
    unsigned id = 0;
    {
        const std::lock_guard hold(m_mutex);
        id = ++m_lastId;
        Item item;
        item.customLabel = label;
        item.isItemized = itemized;
        item.isManual = manual;
        item.instances = instances;
        Insert(id, std::move(item));
        Item& made = m_items[id];
        made.parent = ParentItemOf(id, made);
        GiveNumber(made);
    }
    Notify({kItemAdded, id}, [this, id] {
        m_observers.NotifyAll([id](ItemsListObserver& observer) { observer.OnItemAdded(id); });
    });
    return id;
}

void ItemsList::Restore(unsigned id, const Item& item) {
    {
        const std::lock_guard hold(m_mutex);
        if (m_items.count(id) != 0) return;
        Insert(id, item);
        KeepNumber(m_items[id]);
    }
    Notify({kItemAdded, id}, [this, id] {
        m_observers.NotifyAll([id](ItemsListObserver& observer) { observer.OnItemAdded(id); });
    });
}

void ItemsList::Assign(unsigned id, const std::optional<Item>& item) {
    const auto present = Capture(id);
    if (!item) {
        RemoveItem(id);
    } else if (!present) {
        Restore(id, *item);
    } else if (!(*item == *present)) {
        std::set<SbomPtr> came(item->instances.begin(), item->instances.end());
        std::set<SbomPtr> went;
        for (const auto& instance : present->instances) {
            if (came.erase(instance) == 0) went.insert(instance);
        }
        {
            const std::lock_guard hold(m_mutex);
            for (const auto& instance : m_items[id].instances) Drop(id, instance);
            FreeNumber(m_items[id]);
            m_ranks.Erase(id);
            Insert(id, *item);
            KeepNumber(m_items[id]);
        }
        NotifyContent(id, came, went);
    }
}

ItemsList::Numbers ItemsList::CaptureNumbers() const {
    const std::lock_guard hold(m_mutex);
    Numbers numbers{m_numbering, {}, m_numbers.GetLasts()};
    for (const auto& [id, item] : m_items)
        numbers.byItem.emplace(id, Numbers::Place{item.number, item.parent});
    return numbers;
}

void ItemsList::RestoreNumbers(const Numbers& numbers) {
    {
        const std::lock_guard hold(m_mutex);
        m_numbering = numbers.numbering;
        m_numbers = {};
        for (auto& [id, item] : m_items) {
            const auto kept = numbers.byItem.find(id);
            if (kept != numbers.byItem.end()) {
                item.number = kept->second.number;
                item.parent = kept->second.parent;
            }
            KeepNumber(item);
        }
        for (const auto& [parent, last] : numbers.lasts) m_numbers.SetLast(parent, last);
    }
    NotifyNumbering();
}

bool ItemsList::SetNumber(unsigned id, unsigned number) {
    {
        const std::lock_guard hold(m_mutex);
        const auto entry = m_items.find(id);
        if (entry == m_items.end() || entry->second.number == 0 || number == 0) return false;
        Item& item = entry->second;
        if (!item.customLabel.empty()) return false;
        if (item.number == number) return true;
        if (!m_numbers.Take(LevelOf(item), number)) return false;
        m_numbers.Free(LevelOf(item), std::exchange(item.number, number));
    }
    NotifyContent(id, {}, {});
    return true;
}

bool ItemsList::RemoveItem(unsigned id) {
    {
        const std::lock_guard hold(m_mutex);
        const auto entry = m_items.find(id);
        if (entry == m_items.end()) return false;
        for (const auto& instance : entry->second.instances) Drop(id, instance);
        FreeNumber(entry->second);
        m_ranks.Erase(id);
        m_items.erase(entry);
    }
    Notify({kItemRemoved, id}, [this, id] {
        m_observers.NotifyAll([id](ItemsListObserver& observer) { observer.OnItemRemoved(id); });
    });
    return true;
}

void ItemsList::NotifyContent(unsigned id, const std::set<SbomPtr>& added, const std::set<SbomPtr>& removed) {
    {
        const std::lock_guard hold(m_mutex);
        ContentChange& change = m_untold[id];
        for (const auto& instance : added) {
            if (change.removed.erase(instance) == 0) change.added.insert(instance);
        }
        for (const auto& instance : removed) {
            if (change.added.erase(instance) == 0) change.removed.insert(instance);
        }
    }
    Notify({kContentChanged, id}, [this, id] {
        ContentChange change;
        {
            const std::lock_guard hold(m_mutex);
            std::swap(change, m_untold[id]);
            m_untold.erase(id);
        }
        m_observers.NotifyAll([&](ItemsListObserver& observer) {
            observer.OnItemContentChanged(id, change.added, change.removed);
        });
    });
}

template <class Change>
void ItemsList::ChangeItem(unsigned id, Change change) {
    {
        const std::lock_guard hold(m_mutex);
        const auto entry = m_items.find(id);
        if (entry == m_items.end() || !change(entry->second)) return;
    }
    NotifyContent(id, {}, {});
}

void ItemsList::AddInstance(unsigned id, const SbomPtr& instance) {
    {
        const std::lock_guard hold(m_mutex);
        if (m_items.count(id) == 0 || !instance || m_itemOfInstance.count(instance.get()) != 0) return;
        Take(id, instance);
    }
    NotifyContent(id, {instance}, {});
}

void ItemsList::RemoveInstance(unsigned id, const SbomPtr& instance) {
    const SbomPtr removed = instance;
    {
        const std::lock_guard hold(m_mutex);
        const auto entry = m_itemOfInstance.find(removed.get());
        if (entry == m_itemOfInstance.end() || entry->second != id) return;
        Drop(id, removed);
        auto& instances = m_items[id].instances;
        instances.erase(std::find(instances.begin(), instances.end(), removed));
    }
    NotifyContent(id, {}, {removed});
}

void ItemsList::SetLabel(unsigned id, const std::string& label) {
    ChangeItem(id, [&](Item& item) {
        if (item.customLabel == label) return false;
        item.customLabel = label;
        GiveNumber(item);
        return true;
    });
}

void ItemsList::SetItemized(unsigned id, bool itemized) {
    ChangeItem(id, [&](Item& item) {
        if (item.isItemized == itemized) return false;
        item.isItemized = itemized;
        if (!itemized) FreeNumber(item);
        if (!itemized) item.number = 0;
        GiveNumber(item);
        return true;
    });
}

void ItemsList::SetTag(unsigned id, const std::string& tag) {
    ChangeItem(id, [&](Item& item) { return std::exchange(item.tag, tag) != tag; });
}

void ItemsList::SetLocked(unsigned id, bool locked) {
    ChangeItem(id, [&](Item& item) { return std::exchange(item.isLocked, locked) != locked; });
}

void ItemsList::SetNumbering(const Numbering& numbering) {
    {
        const std::lock_guard hold(m_mutex);
        m_numbering = numbering;
        GiveNumbersAnew({});
    }
    NotifyNumbering();
}

void ItemsList::Renumber(const std::vector<unsigned>& order) {
    {
        const std::lock_guard hold(m_mutex);
        GiveNumbersAnew(order);
    }
    NotifyNumbering();
}

void ItemsList::NotifyNumbering() {
    Notify({kSettingsChanged, 0}, [this] {
        m_observers.NotifyAll([](ItemsListObserver& observer) { observer.OnListSettingsChanged(); });
    });
    const UpdateGroup group(du::SmartPtr<zrk::Observable>(this));
    for (const unsigned id : GetItemIds()) NotifyContent(id, {}, {});
}

void ItemsList::Clear() {
    {
        const std::lock_guard hold(m_mutex);
        for (const auto& [id, item] : m_items) {
            m_ranks.Erase(id);
            for (const auto& instance : item.instances) instance->SetCarriesItem(false);
        }
        m_items.clear();
        m_itemOfInstance.clear();
        m_itemsOfComponent.clear();
        m_numbers = {};
    }
    Notify({kListCleared, 0},
           [this] { m_observers.NotifyAll([](ItemsListObserver& observer) { observer.OnListCleared(); }); });
}

std::optional<ItemsList::Item> ItemsList::Capture(unsigned id) const {
    const std::lock_guard hold(m_mutex);
    const auto entry = m_items.find(id);
    return entry != m_items.end() ? std::optional<Item>(entry->second) : std::nullopt;
}

void ItemsList::NotifyBeginUpdate() {
    m_observers.NotifyAll([](ItemsListObserver& observer) {
        if (observer.RequiresBeginEnd()) observer.OnBeginUpdate();
    });
}

void ItemsList::NotifyEndUpdate() {
    m_observers.NotifyAll([](ItemsListObserver& observer) {
        if (observer.RequiresBeginEnd()) observer.OnEndUpdate();
    });
}

}  // namespace zrk::illustration
