// A magnified cut-out of the picture.

#pragma once

#include <mutex>
#include <set>

#include "dg/Camera3D.h"
#include "dg/DPoint3D.h"
#include "dg/DVec3.h"
#include "dom/ObserverList.h"
#include "du/SmartPtr.h"
#include "zrannotations/Annotation.h"
#include "zrannotations/InsetObserver.h"
#include "zrk/scene/ShapeView.h"

namespace zrannotations {

class Callout;

/// A round glass: it shows what lies around `source` of the main view, `factor` times as large, in a disc of
/// `radius` pixels around `centre`. All in pixels of the main view. Any thread.
class Inset : public Annotation {
public:
    struct Glass {
        dg::DPoint3D source;
        dg::DPoint3D centre;
        double radius = 0.0;
        float factor = 1.0F;

        friend bool operator==(const Glass&, const Glass&) = default;
    };
    /// All of an inset that is saved and undone.
    struct State {
        Glass glass;
        bool isVisible = true;

        friend bool operator==(const State&, const State&) = default;
    };

    /// Without a main view there is nothing to magnify.
    Inset(const du::SmartPtr<zrk::ShapeView>& mainView, const Glass& glass);
    ~Inset() override;

    du::Symbol GetClass() const override;

    void RegisterObserver(const du::SmartPtr<InsetObserver>& observer) { m_observers.Register(observer); }
    void UnregisterObserver(const du::SmartPtr<InsetObserver>& observer) { m_observers.Unregister(observer); }

    Glass GetGlass() const;
    bool IsVisible() const;
    /// Notifies the scene that the inset was modified.
    void SetVisible(bool visible);
    /// The callout leads through this inset from now on; returns the inset that holds it.
    virtual du::SmartPtr<du::RefCounted> AttachCallout(const du::SmartPtr<Callout>& callout);
    bool IsAttached(const Callout& callout) const;

    /// The view through the glass; null without a main view. Its camera follows the main view's when asked
    /// for.
    du::SmartPtr<zrk::ShapeView> GetInsetView();
    /// False, and `out` untouched, without a main view.
    bool GetMagnifierCamera(dg::Camera3D& out) const;
    /// The middle of the glass on the screen.
    dg::DPoint3D GetMagPixelPosition() const;
    /// Where the glass shows a point of the world; false when that lies outside the disc.
    bool GetObjectPtToScreenPt(const dg::DPoint3D& world, dg::DPoint3D& pixel) const;

    /// User commands; observers are told.
    void Displace(const dg::DVec3& displacement, bool temporary);
    void SetRadius(double radius);
    void SetFactor(float factor, bool temporary);
    /// What lies at the pixel `source` of the main view is shown from now on; its callouts are clipped anew.
    void SetSource(const dg::DPoint3D& source);

    State CaptureState() const;
    /// Makes the inset what it was; its callouts, whose states are restored by themselves, are clipped anew.
    void RestoreState(const State& state);
    du::SmartPtr<zrk::Memento> MakeMemento() override;

private:
    const du::SmartPtr<zrk::ShapeView> m_mainView;
    du::SmartPtr<zrk::ShapeView> m_insetView;
    dom::ObserverList<InsetObserver> m_observers;
    mutable std::mutex m_mutex;  // guards all below
    Glass m_glass;
    bool m_isVisible = true;
    std::set<const Callout*> m_attached;  // compared only, never followed
};

}  // namespace zrannotations
