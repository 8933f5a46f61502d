#include "tests/callouts/RegistryProbe.h"

#include <algorithm>

#include "zrannotations/CombinedCallout.h"
#include "zrk/illustration/ItemsList.h"

namespace zrcallouts {
namespace {

std::string Id(const du::SmartPtr<zrk::Annotation>& annotation) {
    return "#" + std::to_string(annotation->Id());
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

// The first member is not filed: the combined callout stands for it.
void RegistryProbe::File(const CalloutPtr& callout, Filed& filed) {
    auto all = WithMembers(callout);
    if (all.size() > 1) all.erase(all.begin() + 1);
    for (const auto& each : all) {
        for (unsigned i = 0; i < each->GetLeaderLineCount(true); ++i)
            filed.emplace(each->GetShapeInstanceIdAtPos(i), each);
    }
}

std::string RegistryProbe::Fault(bool allowsFormer) const {
    return FaultOfParts(allowsFormer) + FaultOfInsets(allowsFormer) + FaultOfItems();
}

std::string RegistryProbe::FaultOfParts(bool allowsFormer) const {
    Filed expected;
    for (const auto& callout : m_engine.m_callouts) File(callout, expected);
    std::string fault;
    for (const auto& [part, callout] : expected) {
        if (!m_engine.m_instanceIdCallouts.contains({part, callout}))
            fault.append(Id(callout)).append(" is not filed under ").append(part).append("\n");
    }
    for (const auto& [part, callout] : m_engine.m_instanceIdCallouts) {
        if (!allowsFormer && !expected.contains({part, callout}))
            fault.append(Id(callout)).append(" is filed under ").append(part).append(" for no reason\n");
    }
    return fault;
}

std::string RegistryProbe::FaultOfInsets(bool allowsFormer) const {
    if (allowsFormer) return {};
    std::set<CalloutPtr> known;
    for (const auto& callout : m_engine.m_callouts) {
        const auto all = WithMembers(callout);
        known.insert(all.begin(), all.end());
    }
    std::string fault;
    for (const auto& [inset, callouts] : m_engine.m_insetCallouts) {
        for (const auto& callout : callouts) {
            if (!known.contains(callout)) fault.append(Id(callout)).append(" has left, but not its inset\n");
        }
    }
    return fault;
}

std::string RegistryProbe::FaultOfItems() const {
    std::string fault;
    std::set<unsigned> carried;
    for (const auto& callout : m_engine.m_callouts) {
        for (const auto& each : WithMembers(callout)) {
            unsigned id = 0;
            if (!each->GetItemId(id)) continue;
            carried.insert(id);
            std::vector<CalloutPtr> known;
            m_engine.GetItemIdCallouts(id, known);
            if (std::find(known.begin(), known.end(), callout) == known.end())
                fault.append("item ")
                    .append(std::to_string(id))
                    .append(" does not know ")
                    .append(Id(callout))
                    .append("\n");
        }
    }
    const auto items = m_engine.GetItemsList()->GetZrkItemList();
    for (const unsigned id : items->GetItemIds()) {
        if (items->IsIndicated(id) != carried.contains(id))
            fault.append("item ")
                .append(std::to_string(id))
                .append(carried.contains(id) ? " lacks its" : " has an")
                .append(" indication\n");
    }
    return fault;
}

}  // namespace zrcallouts
