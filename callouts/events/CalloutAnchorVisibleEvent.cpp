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
    const auto hit = FirstHit();
    if (!hit) return;
    const bool covered = !IsLeadersPart(hit);
    m_callout->SetHiddenAsDashedAtPos(covered, m_leaderIndex);
    m_callout->SetDimAtPos(covered, m_leaderIndex, m_dimColor);
}

du::SmartPtr<zrk::ShapeInstance> CalloutAnchorVisibleEvent::FirstHit() const {
    for (const auto& result : GetResults()) {
        const auto object = result.GetObject();
        if (object && object->GetClassType() == zrk::ShapeInstance::CLASS_TYPE) {
            return du::DynamicCast<zrk::ShapeInstance>(object);
        }
    }
    return nullptr;
}

bool CalloutAnchorVisibleEvent::IsLeadersPart(const du::SmartPtr<zrk::ShapeInstance>& hit) const {
    const auto assembly =
        du::DynamicCast<zrk::illustration::SbomInstance>(m_callout->GetAssemblyInstanceAtPos(m_leaderIndex));
    if (!assembly) return m_callout->GetShapeInstanceAtPos(m_leaderIndex) == hit;
    std::set<du::SmartPtr<zrk::Instance>> members;
    std::set<du::SmartPtr<zrk::Instance>> others;
    assembly->GetEbomInstancesForWeld(members, others);
    return std::any_of(members.begin(), members.end(), [&](const auto& member) {
        du::SmartPtr<zrk::ShapeInstance> shapeInstance;
        m_shapeScene->GetShapeInstance(member, shapeInstance);
        return shapeInstance == hit;
    });
}

}  // namespace zrcallouts
