#include "callouts/events/CalloutAnchorVisibleEvent.h"

#include <algorithm>
#include <set>
#include <utility>

namespace zrcallouts {

CalloutAnchorVisibleEvent::CalloutAnchorVisibleEvent(du::SmartPtr<Callouts> engine,
                                                     du::SmartPtr<zrk::ShapeScene> shapeScene,
                                                     du::SmartPtr<zrannotations::Callout> callout,
                                                     unsigned int leaderIndex, const dg::Color& dimColor)
    : m_engine(std::move(engine)),
      m_shapeScene(std::move(shapeScene)),
      m_callout(std::move(callout)),
      m_leaderIndex(leaderIndex),
      m_dimColor(dimColor) {}

CalloutAnchorVisibleEvent::~CalloutAnchorVisibleEvent() = default;

void CalloutAnchorVisibleEvent::OnComplete(int) {
    if (m_engine) m_engine->OnReceiveAnchorVisiblePick();
    if (!m_callout || !m_callout->GetScene()) return;
    const zrk::Object* hit = FirstHit();
    if (hit == nullptr) return;
    m_callout->SetCoveredAtPos(!IsLeadersPart(hit), m_leaderIndex, m_dimColor);
}

const zrk::Object* CalloutAnchorVisibleEvent::FirstHit() const {
    for (const auto& result : GetResults()) {
        const auto& object = result.GetObject();
        if (object && object->GetClassType() == zrk::ShapeInstance::CLASS_TYPE) return object.get();
    }
    return nullptr;
}

bool CalloutAnchorVisibleEvent::IsLeadersPart(const zrk::Object* hit) const {
    zrannotations::Callout::LeaderEnd end;
    if (!m_callout->GetLeaderEndAtPos(m_leaderIndex, end)) return false;
    const auto assembly = du::DynamicCast<zrk::illustration::SbomInstance>(end.assembly);
    if (!assembly) return end.part.get() == hit;
    std::set<du::SmartPtr<zrk::Instance>> members;
    std::set<du::SmartPtr<zrk::Instance>> others;
    assembly->GetEbomInstancesForWeld(members, others);
    return std::any_of(members.begin(), members.end(), [&](const auto& member) {
        du::SmartPtr<zrk::ShapeInstance> shapeInstance;
        m_shapeScene->GetShapeInstance(member, shapeInstance);
        return shapeInstance.get() == hit;
    });
}

}  // namespace zrcallouts
