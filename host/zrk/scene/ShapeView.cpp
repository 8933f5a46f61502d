#include "zrk/scene/ShapeView.h"

#include <utility>

#include "zrk/object/Checked.h"
#include "zrk/operation/CallStep.h"
#include "zrk/operation/Operation.h"
#include "zrk/scene/PickScene.h"

namespace zrk {
constinit const ClassType ShapeView::CLASS_TYPE(24, "zrk::ShapeView", &View::CLASS_TYPE);

ShapeView::ShapeView(const du::SmartPtr<ShapeScene>& scene, unsigned viewId) : View(scene, viewId) {}

ShapeView::~ShapeView() = default;

void ShapeView::GetCamera(dg::Camera3D& out) const {
    const std::lock_guard hold(m_mutex);
    out = m_camera;
}

void ShapeView::GetBackgroundColors(dg::Color& top, dg::Color& bottom, dg::Color& border) const {
    const std::lock_guard hold(m_mutex);
    top = m_colors.top;
    bottom = m_colors.bottom;
    border = m_colors.border;
}

void ShapeView::Pick(const dg::Camera3D& camera, int x, int y, du::Flags flags, PickEvent* event) {
    m_picks->Add({event, nullptr, camera.PixelRay(x, y), flags}, GetShapeScene());
}

void ShapeView::Pick(int x, int y, du::Flags flags, PickEvent* event) {
    dg::Camera3D camera;
    GetCamera(camera);
    Pick(camera, x, y, flags, event);
}

void ShapeView::Pick(const du::SmartPtr<ShapeInstance>& only, int x, int y, du::Flags flags,
                     PickEvent* event) {
    dg::Camera3D camera;
    GetCamera(camera);
    m_picks->Add({event, only, camera.PixelRay(x, y), flags}, GetShapeScene());
}

template <class Apply, class State>
void ShapeView::TakeIn(Apply apply, const State& former, const State& state) {
    if (!History::IsAnyActive() || former == state) return;
    const auto scene = GetScene();
    const auto operation = scene ? scene->GetHistory().GetOpenOperation() : du::SmartPtr<Operation>();
    if (!operation || !scene->HasView(*this)) return;
    const du::SmartPtr<ShapeView> self(this);
    operation->AddStep(Checked(new CallStep([self, apply, former] { apply(*self, former); },
                                            [self, apply, state] { apply(*self, state); })));
}

void ShapeView::PutCamera(const dg::Camera3D& camera) {
    {
        const std::lock_guard hold(m_mutex);
        m_camera = camera;
    }
    SetDirty();
}

void ShapeView::SetCamera(const dg::Camera3D& camera) {
    dg::Camera3D former;
    GetCamera(former);
    dg::Camera3D changed = camera;
    if (camera.GetViewportWidth() == 0) {
        changed.SetViewport(former.GetViewportWidth(), former.GetViewportHeight());
    }
    PutCamera(changed);
    TakeIn([](ShapeView& view, const dg::Camera3D& state) { view.PutCamera(state); }, former, changed);
}

void ShapeView::PutColors(const Colors& colors) {
    {
        const std::lock_guard hold(m_mutex);
        m_colors = colors;
    }
    SetDirty();
    const du::SmartPtr<ShapeView> self(this);
    if (const auto scene = GetScene()) {
        scene->GetObservers().NotifyAll(
            [&](SceneObserver& observer) { observer.OnBackgroundColorChanged(self); });
    }
}

void ShapeView::SetBackgroundColors(const dg::Color& top, const dg::Color& bottom, const dg::Color& border) {
    Colors former;
    GetBackgroundColors(former.top, former.bottom, former.border);
    const Colors colors{top, bottom, border};
    PutColors(colors);
    TakeIn([](ShapeView& view, const Colors& state) { view.PutColors(state); }, former, colors);
}

void ShapeView::Resize(int width, int height) {
    std::pair former(0, 0);
    {
        const std::lock_guard hold(m_mutex);
        former = {m_camera.GetViewportWidth(), m_camera.GetViewportHeight()};
        m_camera.SetViewport(width, height);
    }
    SetDirty();
    TakeIn([](ShapeView& view, const auto& size) { view.Resize(size.first, size.second); }, former,
           std::pair(width, height));
    const du::SmartPtr<ShapeView> self(this);
    if (const auto scene = GetScene()) {
        scene->GetObservers().NotifyAll([&](SceneObserver& observer) { observer.OnWindowSizeChanged(self); });
    }
}

void ShapeView::OnTimer() {
    dg::Camera3D lastChecked;
    {
        const std::lock_guard hold(m_timerMutex);
        lastChecked = m_lastChecked;
    }
    const du::SmartPtr<ShapeView> self(this);
    if (const auto scene = GetScene()) {
        scene->GetObservers().NotifyAll(
            [&](SceneObserver& observer) { observer.OnViewTimeout(self, lastChecked); });
    }
    const std::lock_guard hold(m_timerMutex);
    m_lastChecked = lastChecked;
}

std::shared_ptr<const VisibilityMap> ShapeView::GetVisibilityMap() const {
    const auto scene = GetShapeScene();
    if (!scene) return nullptr;
    dg::Camera3D camera;
    GetCamera(camera);
    const std::lock_guard hold(m_mapMutex);
    const std::uint64_t revision = scene->GetRevision();
    if (!m_map || m_mapRevision != revision || !(m_mapCamera == camera)) {
        m_map = std::make_shared<const VisibilityMap>(*scene->GetPickScene(), camera);
        m_mapCamera = camera;
        m_mapRevision = revision;
    }
    return m_map;
}

}  // namespace zrk
