// Told about an inset.

#pragma once

#include "dg/DVec3.h"
#include "zrk/object/Observer.h"

namespace zrannotations {

class InsetObserver : public zrk::Observer {
public:
    ~InsetObserver() override;

    /// The inset moved on the screen by so many pixels; `temporary` while it is being dragged.
    virtual void OnInsetDisplaced(const dg::DVec3&, bool) {}
    virtual void OnInsetBoundsChanged() {}
    /// Old and new magnification; `temporary` while it is being dragged.
    virtual void OnMagnifierChanged(float, float, bool) {}
};

}  // namespace zrannotations
