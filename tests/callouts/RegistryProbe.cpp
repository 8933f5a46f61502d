#include "tests/callouts/RegistryProbe.h"

#include <set>

#include "zrannotations/CombinedCallout.h"
#include "zrk/illustration/ItemsList.h"

namespace zrcallouts {
namespace {

/// What stands in an index, an entry a line.
using Entries = std::set<std::string>;

std::string Entry(const Callouts::CalloutPtr& callout, const std::string& place) {
    return "#" + std::to_string(callout->Id()) + " under " + place;
}

std::string Item(unsigned id) { return "item " + std::to_string(id); }

/// The entries that `others` lacks.
std::string Without(const Entries& entries, const Entries& others, const char* verdict) {
    std::string fault;
    for (const auto& entry : entries) {
        if (!others.contains(entry)) fault.append(entry).append(verdict);
    }
    return fault;
}

/// All that it says about itself and, when it is a combined one, about its members.
std::vector<Callouts::CalloutPtr> WithMembers(const Callouts::CalloutPtr& callout) {
    std::vector<Callouts::CalloutPtr> all{callout};
    if (const auto combined = du::DynamicCast<zrannotations::CombinedCallout>(callout)) {
        for (const auto& member : combined->GetCalloutVec()) {
            if (member) all.push_back(member);
        }
    }
    return all;
}

}  // namespace

std::string RegistryProbe::Fault(bool allowsFormer) const {
    return FaultOfParts(allowsFormer) + (allowsFormer ? "" : FaultOfInsets()) + FaultOfItems();
}

std::string RegistryProbe::FaultOfParts(bool allowsFormer) const {
    Entries expected;
    for (const auto& callout : m_engine.m_callouts) {
        auto all = WithMembers(callout);
        // The first member is not filed: the combined callout stands for it.
        if (all.size() > 1) all.erase(all.begin() + 1);
        for (const auto& each : all) {
            for (unsigned i = 0; i < each->GetLeaderLineCount(true); ++i)
                expected.insert(Entry(each, each->GetShapeInstanceIdAtPos(i)));
        }
    }
    Entries filed;
    for (const auto& [part, callout] : m_engine.m_instanceIdCallouts) filed.insert(Entry(callout, part));
    return Without(expected, filed, " is missing\n") +
           (allowsFormer ? "" : Without(filed, expected, " is there for no reason\n"));
}

std::string RegistryProbe::FaultOfInsets() const {
    Entries expected;
    for (const auto& callout : m_engine.m_callouts) {
        for (const auto& each : WithMembers(callout)) expected.insert(Entry(each, "its inset"));
    }
    Entries recorded;
    for (const auto& [inset, callouts] : m_engine.m_insetCallouts) {
        for (const auto& callout : callouts) recorded.insert(Entry(callout, "its inset"));
    }
    return Without(recorded, expected, ", but it has left\n");
}

std::string RegistryProbe::FaultOfItems() const {
    const auto items = m_engine.GetItemsList()->GetZrkItemList();
    Entries expected;
    Entries known;
    std::set<unsigned> carried;
    for (const auto& callout : m_engine.m_callouts) {
        for (const auto& each : WithMembers(callout)) {
            unsigned id = 0;
            if (!each->GetItemId(id)) continue;
            carried.insert(id);
            expected.insert(Entry(callout, Item(id)));
        }
    }
    for (const unsigned id : carried) {
        std::vector<Callouts::CalloutPtr> callouts;
        m_engine.GetItemIdCallouts(id, callouts);
        for (const auto& callout : callouts) known.insert(Entry(callout, Item(id)));
    }
    for (const unsigned id : items->GetItemIds()) {
        if (carried.contains(id)) expected.insert(Item(id) + "'s indication");
        if (items->IsIndicated(id)) known.insert(Item(id) + "'s indication");
    }
    return Without(expected, known, " is missing\n") + Without(known, expected, " is there for no reason\n");
}

}  // namespace zrcallouts
