// The pick that finds where on its part's surface a leader of a new callout ends.

#pragma once

#include "callouts/Callouts.h"
#include "zrk/event/PickEvent.h"

namespace zrcallouts {

class CalloutPickAnchorEvent : public zrk::PickEvent {
public:
    CalloutPickAnchorEvent(du::SmartPtr<Callouts> engine, du::SmartPtr<zrannotations::Callout> callout,
                           unsigned int leaderIndex);
    ~CalloutPickAnchorEvent() override;

    du::Symbol GetObjectClass() const override;
    /// A pick is answered at once: there is no progress to show.
    void OnProgress(unsigned char) override {}
    void OnComplete(int status) override;

private:
    du::SmartPtr<Callouts> m_engine;
    du::SmartPtr<zrannotations::Callout> m_callout;
    unsigned int m_leaderIndex;
};

}  // namespace zrcallouts
