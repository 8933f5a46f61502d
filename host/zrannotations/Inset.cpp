#include "zrannotations/Inset.h"

#include <cmath>

#include "zrannotations/Callout.h"
#include "zrannotations/ConstStrings.h"
#include "zrk/object/Checked.h"

namespace zrannotations {
namespace {

du::SmartPtr<zrk::ShapeView> MakeInsetView(const du::SmartPtr<zrk::ShapeView>& mainView) {
    const auto scene = mainView ? mainView->GetShapeScene() : du::SmartPtr<zrk::ShapeScene>();
    return scene
               ? du::SmartPtr<zrk::ShapeView>(zrk::Checked(new zrk::ShapeView(scene, mainView->GetViewId())))
               : du::SmartPtr<zrk::ShapeView>();
}

}  // namespace

Inset::Inset(const du::SmartPtr<zrk::ShapeView>& mainView, const Glass& glass)
    : m_mainView(mainView), m_insetView(MakeInsetView(mainView)), m_glass(glass) {}

Inset::~Inset() = default;

du::Symbol Inset::GetClass() const { return ConstStrings::zrInset; }

Inset::Glass Inset::GetGlass() const {
    const std::lock_guard hold(m_mutex);
    return m_glass;
}

bool Inset::IsVisible() const {
    const std::lock_guard hold(m_mutex);
    return m_isVisible;
}

void Inset::SetVisible(bool visible) {
    BeforeChange();
    {
        const std::lock_guard hold(m_mutex);
        m_isVisible = visible;
    }
    NotifyModified();
}

du::SmartPtr<du::RefCounted> Inset::AttachCallout(const du::SmartPtr<Callout>& callout) {
    const std::lock_guard hold(m_mutex);
    m_attached.insert(callout.get());
    return du::SmartPtr<du::RefCounted>(this);
}

bool Inset::IsAttached(const Callout& callout) const {
    const std::lock_guard hold(m_mutex);
    return m_attached.count(&callout) != 0;
}

du::SmartPtr<zrk::ShapeView> Inset::GetInsetView() {
    dg::Camera3D camera;
    if (m_insetView && GetMagnifierCamera(camera)) m_insetView->SetCamera(camera);
    return m_insetView;
}

bool Inset::GetMagnifierCamera(dg::Camera3D& out) const {
    if (!m_mainView) return false;
    dg::Camera3D camera;
    m_mainView->GetCamera(camera);
    const Glass glass = GetGlass();
    out = camera.Magnified(glass.source, glass.centre, static_cast<double>(glass.factor));
    return true;
}

dg::DPoint3D Inset::GetMagPixelPosition() const { return GetGlass().centre; }

bool Inset::GetObjectPtToScreenPt(const dg::DPoint3D& world, dg::DPoint3D& pixel) const {
    dg::Camera3D camera;
    if (!GetMagnifierCamera(camera)) return false;
    const Glass glass = GetGlass();
    pixel = world * camera.GetWorldToPixel();
    return std::hypot(pixel.x - glass.centre.x, pixel.y - glass.centre.y) <= glass.radius;
}

void Inset::Displace(const dg::DVec3& displacement, bool temporary) {
    BeforeChange();
    {
        const std::lock_guard hold(m_mutex);
        m_glass.centre = m_glass.centre + displacement;
    }
    m_observers.NotifyAll(
        [&](InsetObserver& observer) { observer.OnInsetDisplaced(displacement, temporary); });
}

void Inset::SetSource(const dg::DPoint3D& source) {
    BeforeChange();
    {
        const std::lock_guard hold(m_mutex);
        m_glass.source = source;
    }
    m_observers.NotifyAll([](InsetObserver& observer) { observer.OnInsetBoundsChanged(); });
}

Inset::State Inset::CaptureState() const {
    const std::lock_guard hold(m_mutex);
    return {m_glass, m_isVisible};
}

// That the inset was modified is not told: callouts are shown and hidden by states of their own.
void Inset::RestoreState(const State& state) {
    if (CaptureState() == state) return;
    BeforeChange();
    {
        const std::lock_guard hold(m_mutex);
        m_glass = state.glass;
        m_isVisible = state.isVisible;
    }
    m_observers.NotifyAll([](InsetObserver& observer) { observer.OnInsetBoundsChanged(); });
}

du::SmartPtr<zrk::Memento> Inset::MakeMemento() {
    return new zrk::StateMemento<Inset>(du::SmartPtr<Inset>(this));
}

void Inset::SetRadius(double radius) {
    BeforeChange();
    {
        const std::lock_guard hold(m_mutex);
        m_glass.radius = radius;
    }
    m_observers.NotifyAll([](InsetObserver& observer) { observer.OnInsetBoundsChanged(); });
}

void Inset::SetFactor(float factor, bool temporary) {
    BeforeChange();
    float former = 0.0F;
    {
        const std::lock_guard hold(m_mutex);
        former = m_glass.factor;
        m_glass.factor = factor;
    }
    m_observers.NotifyAll(
        [&](InsetObserver& observer) { observer.OnMagnifierChanged(former, factor, temporary); });
}

}  // namespace zrannotations
