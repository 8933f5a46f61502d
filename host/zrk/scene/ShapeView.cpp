#include "zrk/scene/ShapeView.h"

#include <utility>

#include "zrk/scene/PickScene.h"
#include "zrk/world/Kernel.h"

namespace zrk {
namespace {

constexpr int kCancelled = 1;

}  // namespace

constinit const ClassType ShapeView::CLASS_TYPE(24, "zrk::ShapeView", &View::CLASS_TYPE);

ShapeView::ShapeView(const du::SmartPtr<ShapeScene>& scene, unsigned viewId) : View(scene, viewId) {}

ShapeView::~ShapeView() = default;

void ShapeView::GetCamera(dg::Camera3D& out) const {
    const std::lock_guard hold(m_mutex);
    out = m_camera;
}

void ShapeView::GetBackgroundColors(dg::Color& top, dg::Color& bottom, dg::Color& border) const {
    const std::lock_guard hold(m_mutex);
    top = m_top;
    bottom = m_bottom;
    border = m_border;
}

void ShapeView::Queue(PickEvent* event, Answer answer) {
    const du::SmartPtr<PickEvent> pick(event);
    const auto kernel = Kernel::GetKernel();
    if (!kernel) {
        pick->Complete(kCancelled);
        return;
    }
    kernel->Post([pick, scene = GetShapeScene(), answer = std::move(answer)](int status) {
        if (status == 0 && scene) pick->SetResults(answer(*scene->GetPickScene()));
        pick->Complete(scene ? status : kCancelled);
    });
}

void ShapeView::Pick(const dg::Camera3D& camera, int x, int y, du::Flags flags, PickEvent* event) {
    const dg::Ray ray = camera.PixelRay(x, y);
    Queue(event, [ray, flags](const PickScene& scene) { return scene.Pick(ray, flags); });
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
    const dg::Ray ray = camera.PixelRay(x, y);
    Queue(event, [only, ray, flags](const PickScene& scene) { return scene.PickOnly(*only, ray, flags); });
}

void ShapeView::SetCamera(const dg::Camera3D& camera) {
    {
        const std::lock_guard hold(m_mutex);
        const int width = m_camera.GetViewportWidth();
        const int height = m_camera.GetViewportHeight();
        m_camera = camera;
        if (camera.GetViewportWidth() == 0) m_camera.SetViewport(width, height);
    }
    SetDirty();
}

void ShapeView::SetBackgroundColors(const dg::Color& top, const dg::Color& bottom, const dg::Color& border) {
    {
        const std::lock_guard hold(m_mutex);
        m_top = top;
        m_bottom = bottom;
        m_border = border;
    }
    SetDirty();
    const du::SmartPtr<ShapeView> self(this);
    if (const auto scene = GetScene()) {
        scene->GetObservers().NotifyAll(
            [&](SceneObserver& observer) { observer.OnBackgroundColorChanged(self); });
    }
}

void ShapeView::Resize(int width, int height) {
    {
        const std::lock_guard hold(m_mutex);
        m_camera.SetViewport(width, height);
    }
    SetDirty();
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
