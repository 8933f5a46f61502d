// Keeps the callouts that lead through an inset in step with the inset.

#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "callouts/observers/EngineHandle.h"
#include "dg/DPoint3D.h"
#include "dg/DVec3.h"
#include "zrannotations/Callout.h"
#include "zrannotations/Inset.h"
#include "zrannotations/InsetObserver.h"
#include "zrk/scene/ShapeView.h"

namespace zrcallouts {

class InsetObserver : public zrannotations::InsetObserver {
public:
    InsetObserver(du::SmartPtr<zrannotations::Inset> inset, std::shared_ptr<EngineHandle> handle)
        : m_inset(std::move(inset)), m_owner(std::move(handle)) {}
    ~InsetObserver() override;

    /// The inset moved on the screen: its labels move along. Nothing while `temporary`.
    void OnInsetDisplaced(const dg::DVec3& displacement, bool temporary) override;
    /// The inset's bounds changed: its leaders are clipped again.
    void OnInsetBoundsChanged() override;
    /// The magnification changed: the labels keep their place relative to what is magnified, seen from the
    /// magnifier's centre. Nothing while `temporary` or when the old factor is 0.
    void OnMagnifierChanged(float oldFactor, float newFactor, bool temporary) override;

    /// Drops the reference to the inset; every later notification does nothing.
    void ReleaseInset();

private:
    du::SmartPtr<zrannotations::Inset> GetInset() const;
    std::vector<du::SmartPtr<zrannotations::Callout>> GetCallouts() const;
    du::SmartPtr<zrk::ShapeView> GetMainView() const;

    mutable std::mutex
        m_mutex;  // guards m_inset, which the engine drops while a notification may be in flight
    du::SmartPtr<zrannotations::Inset> m_inset;
    EngineLink m_owner;
};

}  // namespace zrcallouts
