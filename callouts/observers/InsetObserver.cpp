#include "callouts/observers/InsetObserver.h"

#include <utility>

#include "callouts/Callouts.h"
#include "dg/Camera3D.h"
#include "dg/FMat33.h"
#include "dg/Location.h"

namespace zrcallouts {
namespace {

/// Puts the label at a pixel position of the view's screen and pins it to the screen there.
void PlaceLabel(zrannotations::Callout& callout, const du::SmartPtr<zrk::ShapeView>& view,
                const dg::DMat44& pixelToWorld, const dg::DPoint3D& pixel) {
    dg::Location location;
    callout.GetInstanceLocationAtPos(location, 0);
    location.SetMat(dg::FMat33::Scale(location.GetScale()));
    callout.SetLabelPosition(pixel * pixelToWorld * location.GetXform().Invert());
    callout.SetLabelScreenSpaceMode(view);
}

}  // namespace

InsetObserver::~InsetObserver() = default;

void InsetObserver::ReleaseInset() {
    du::SmartPtr<zrannotations::Inset> inset;
    const std::lock_guard hold(m_mutex);
    std::swap(inset, m_inset);
}

du::SmartPtr<zrannotations::Inset> InsetObserver::GetInset() const {
    const std::lock_guard hold(m_mutex);
    return m_inset;
}

std::vector<du::SmartPtr<zrannotations::Callout>> InsetObserver::GetCallouts() const {
    const auto inset = GetInset();
    const auto engine = m_owner.Lock();
    return inset && engine ? engine->SnapshotInset(inset)
                           : std::vector<du::SmartPtr<zrannotations::Callout>>();
}

du::SmartPtr<zrk::ShapeView> InsetObserver::GetMainView() const {
    const auto inset = GetInset();
    const auto scene = inset ? inset->GetScene() : du::SmartPtr<zrk::Scene>();
    return scene ? du::DynamicCast<zrk::ShapeView>(scene->GetView(0)) : du::SmartPtr<zrk::ShapeView>();
}

void InsetObserver::OnInsetBoundsChanged() {
    const auto inset = GetInset();
    if (!inset) return;
    for (const auto& callout : GetCallouts()) callout->SetVisibleWithinInsetBounds(inset);
}

void InsetObserver::OnInsetDisplaced(const dg::DVec3& displacement, bool temporary) {
    auto view = temporary ? du::SmartPtr<zrk::ShapeView>() : GetMainView();
    if (!view) return;
    dg::Camera3D camera;
    view->GetCamera(camera);
    const dg::DMat44 pixelToWorld = camera.GetWorldToPixel().Invert();
    for (const auto& callout : GetCallouts()) {
        du::SmartPtr<zrk::ShapeView> screen;
        const dg::DPoint3D pixel = callout->GetLabelRelativeScreenPosition(screen) + displacement;
        PlaceLabel(*callout, screen, pixelToWorld, pixel);
    }
}

void InsetObserver::OnMagnifierChanged(float oldFactor, float newFactor, bool temporary) {
    const auto inset = GetInset();
    auto view = temporary || oldFactor == 0.0F ? du::SmartPtr<zrk::ShapeView>() : GetMainView();
    if (!inset || !view) return;
    dg::Camera3D camera;
    view->GetCamera(camera);
    const dg::DMat44 pixelToWorld = camera.GetWorldToPixel().Invert();
    const dg::DPoint3D centre = inset->GetMagPixelPosition();
    const double ratio = static_cast<double>(newFactor) / static_cast<double>(oldFactor);
    for (const auto& callout : GetCallouts()) {
        du::SmartPtr<zrk::ShapeView> screen;
        const dg::DPoint3D pixel = callout->GetLabelRelativeScreenPosition(screen);
        const dg::DPoint3D moved(centre.x + (pixel.x - centre.x) * ratio,
                                 centre.y + (pixel.y - centre.y) * ratio, pixel.z);
        PlaceLabel(*callout, screen, pixelToWorld, moved);
    }
}

}  // namespace zrcallouts
