#include "callouts/events/CalloutPickAnchorEvent.h"

#include <utility>

namespace zrcallouts {

CalloutPickAnchorEvent::CalloutPickAnchorEvent(du::SmartPtr<Callouts> engine,
                                               du::SmartPtr<zrannotations::Callout> callout,
                                               unsigned int leaderIndex)
    : m_engine(std::move(engine)), m_callout(std::move(callout)), m_leaderIndex(leaderIndex) {}

CalloutPickAnchorEvent::~CalloutPickAnchorEvent() = default;

du::Symbol CalloutPickAnchorEvent::GetObjectClass() const {
    static const du::Symbol kClass("zrcallouts::CalloutPickAnchorEvent");
    return kClass;
}

void CalloutPickAnchorEvent::OnComplete(int status) {
    if (status == 0) m_engine->OnReceivePick(GetResults(), m_callout, static_cast<int>(m_leaderIndex));
}

}  // namespace zrcallouts
