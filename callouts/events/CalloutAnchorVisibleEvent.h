// The pick that finds out whether a leader's anchor is the first thing the eye meets there.

#pragma once

#include "callouts/Callouts.h"
#include "dg/Color.h"
#include "zrk/event/PickEvent.h"
#include "zrk/scene/ShapeScene.h"

namespace zrcallouts {

class CalloutAnchorVisibleEvent : public zrk::PickEvent {
public:
    CalloutAnchorVisibleEvent(du::SmartPtr<Callouts> engine, du::SmartPtr<zrk::ShapeScene> shapeScene,
                              du::SmartPtr<zrannotations::Callout> callout, unsigned int leaderIndex,
                              const dg::Color& dimColor);
    ~CalloutAnchorVisibleEvent() override;

    /// A pick is answered at once: there is no progress to show.
    void OnProgress(unsigned char) override {}
    /// One check less is outstanding, whatever the status; then the first part that was hit decides.
    void OnComplete(int status) override;

private:
    /// Null when no part was hit.
    const zrk::Object* FirstHit() const;
    bool IsLeadersPart(const zrk::Object* hit) const;

    du::SmartPtr<Callouts> m_engine;
    du::SmartPtr<zrk::ShapeScene> m_shapeScene;
    du::SmartPtr<zrannotations::Callout> m_callout;
    unsigned int m_leaderIndex;
    dg::Color m_dimColor;
};

}  // namespace zrcallouts
