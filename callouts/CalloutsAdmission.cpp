// Which callouts may be shown, and in which order they stand in the item list.

#include <algorithm>
#include <utility>

#include "callouts/Callouts.h"
#include "zrk/illustration/ItemsList.h"

namespace zrcallouts {
namespace {

using zrannotations::Callout;
using CalloutPtr = du::SmartPtr<Callout>;
using InsetPtr = du::SmartPtr<zrannotations::Inset>;

enum class Place { kSame, kElsewhere, kRefused };

bool UsesItemList(const Callout& callout) {
    const auto definition = callout.GetDefinition();
    return definition && definition->RequiresItemList();
}

/// Where `other` stands relative to a callout that leads to the instance `id` through `inset` (null: main
/// view).
Place ComparePlaces(const Callout& other, const std::string& id, const InsetPtr& inset) {
    const unsigned int leaders = other.GetLeaderLineCount(true);
    for (unsigned int i = 0; i < leaders; ++i) {
        if (other.GetShapeInstanceIdAtPos(i) != id) continue;
        const InsetPtr otherInset = other.GetInsetAtPos(i);
        // Within one inset a second callout on the same part is never wanted, whatever its number.
        if (inset && otherInset == inset) return Place::kRefused;
        if (!inset && otherInset) return Place::kElsewhere;
    }
    return inset ? Place::kElsewhere : Place::kSame;
}

/// Whether both would show the same number. A missing number counts as the same.
bool RepeatsNumber(const Callout& callout, const Callout& other) {
    unsigned int id = 0;
    unsigned int otherId = 0;
    return !callout.GetItemId(id) || !other.GetItemId(otherId) || id == otherId;
}

/// A callout's place in the item list, asked for once.
struct Ranked {
    CalloutPtr callout;
    bool hasItem = false;
    std::vector<unsigned int> index;
};

bool GoesBeforeFlat(const Ranked& b, const Ranked& a) { return b.index.front() < a.index.front(); }

// Not an ordering, and kept so: a position where `a` is smaller does not decide, an equal one does when `a`
// is deeper.
bool GoesBeforeHierarchical(const Ranked& b, const Ranked& a) {
    const std::size_t depth = std::min(a.index.size(), b.index.size());
    for (std::size_t k = 0; k < depth; ++k) {
        if (a.index[k] > b.index[k]) return true;
        if (a.index[k] == b.index[k] && a.index.size() > b.index.size()) return true;
    }
    return false;
}

using GoesBefore = bool (*)(const Ranked&, const Ranked&);

/// Exchanges pairs until none is out of order or a callout without item is met.
void ExchangeSort(std::vector<Ranked>& ranked, GoesBefore goesBefore) {
    for (std::size_t i = 0; i + 1 < ranked.size(); ++i) {
        for (std::size_t j = i + 1; j < ranked.size(); ++j) {
            if (!ranked[i].hasItem || !ranked[j].hasItem) return;
            if (goesBefore(ranked[j], ranked[i])) std::swap(ranked[i], ranked[j]);
        }
    }
}

/// Where every callout has a place of its own, any sort gives the one result and the fast one will do.
bool HasDistinctPlaces(const std::vector<Ranked>& ranked) {
    std::set<unsigned int> places;
    return std::all_of(ranked.begin(), ranked.end(), [&places](const Ranked& entry) {
        return entry.hasItem && places.insert(entry.index.front()).second;
    });
}

std::vector<Ranked> Rank(const std::vector<CalloutPtr>& callouts, zrk::illustration::ItemsList& items,
                         bool hierarchical) {
    std::vector<Ranked> ranked;
    ranked.reserve(callouts.size());
    for (const auto& callout : callouts) {
        unsigned int id = 0;
        const bool hasItem = callout && callout->GetItemId(id);
        Ranked entry{callout, hasItem, {}};
        if (hasItem && hierarchical) entry.index = items.GetHierarchyIndex(id);
        if (hasItem && !hierarchical) entry.index = {items.GetIndex(id)};
        ranked.push_back(std::move(entry));
    }
    return ranked;
}

}  // namespace

bool Callouts::IsAllowed(const CalloutPtr& callout) const {
    if (!callout) return false;
    const bool hasItemList = static_cast<bool>(GetItemsList());
    if (!UsesItemList(*callout) || callout->IsKit() || !hasItemList) return true;
    const unsigned int leaders = callout->GetLeaderLineCount(true);
    for (unsigned int i = 0; i < leaders; ++i) {
        const std::string id = callout->GetShapeInstanceIdAtPos(i);
        if (id.empty()) continue;
        const InsetPtr inset = callout->GetInsetAtPos(i);
        for (const auto& other : SnapshotInstance(id)) {
            if (other == callout) continue;
            if (!inset && !RepeatsNumber(*callout, *other)) continue;
            if (other->IsKit() || !UsesItemList(*other)) continue;
            const Place place = ComparePlaces(*other, id, inset);
            if (place != Place::kElsewhere) return false;
        }
    }
    return true;
}

void Callouts::Sort(std::vector<CalloutPtr>& callouts) const {
    const auto itemList = GetItemsList();
    const auto items = itemList ? itemList->GetZrkItemList() : du::SmartPtr<zrk::illustration::ItemsList>();
    if (!items || callouts.size() < 2) return;
    zrk::illustration::ItemsList::Numbering numbering;
    items->GetNumberingSettings(numbering);
    std::vector<Ranked> ranked = Rank(callouts, *items, numbering.hierarchical);
    if (numbering.hierarchical) {
        ExchangeSort(ranked, GoesBeforeHierarchical);
    } else if (HasDistinctPlaces(ranked)) {
        std::sort(ranked.begin(), ranked.end(), GoesBeforeFlat);
    } else {
        ExchangeSort(ranked, GoesBeforeFlat);
    }
    std::transform(ranked.begin(), ranked.end(), callouts.begin(),
                   [](const Ranked& entry) { return entry.callout; });
}

}  // namespace zrcallouts
