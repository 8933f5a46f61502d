#include "zrk/illustration/EngineForwarder.h"

#include "zrk/illustration/CalloutEngineMgr.h"

namespace zrk::illustration {

EngineForwarder::EngineForwarder(const du::SmartPtr<zrk::ShapeScene>& scene) : m_scene(scene->GetLink()) {}

EngineForwarder::~EngineForwarder() = default;

du::SmartPtr<Callouts> EngineForwarder::Engine() const {
    const auto scene = du::DynamicCast<zrk::ShapeScene>(m_scene->Lock());
    return scene ? CalloutEngineMgr::Instance().GetCalloutsEngineForScene(scene) : du::SmartPtr<Callouts>();
}

/// Only the main view is the engine's; insets have views of their own.
du::SmartPtr<Callouts> EngineForwarder::EngineOf(const du::SmartPtr<zrk::ShapeView>& view) const {
    const auto scene = m_scene->Lock();
    const bool isMainView = scene && scene->GetView(0) == du::SmartPtr<zrk::View>(view);
    return isMainView && m_forwardsViews.load(std::memory_order_relaxed) ? Engine()
                                                                         : du::SmartPtr<Callouts>();
}

void EngineForwarder::OnShapeInstanceCreated(const du::SmartPtr<zrk::ShapeInstance>& part) {
    if (const auto engine = Engine()) engine->OnShapeInstanceCreate(part);
}

void EngineForwarder::OnShapeInstanceMoved(const du::SmartPtr<zrk::ShapeInstance>& part) {
    if (const auto engine = Engine()) engine->OnShapeInstanceLocation(part);
}

void EngineForwarder::OnShapeInstanceVisibilityChanged(const du::SmartPtr<zrk::ShapeInstance>& part,
                                                       bool visible) {
    if (const auto engine = Engine()) engine->OnShapeInstanceVisibility(part, visible);
}

void EngineForwarder::OnShapeInstanceRemoved(const du::SmartPtr<zrk::ShapeInstance>& part) {
    if (const auto engine = Engine()) engine->OnShapeInstanceRemove(part);
}

void EngineForwarder::OnAnnotationAdded(const du::SmartPtr<zrk::Annotation>& annotation) {
    if (const auto engine = Engine()) engine->OnAddAnnotation(annotation);
}

void EngineForwarder::OnAnnotationRemoved(const du::SmartPtr<zrk::Annotation>& annotation) {
    if (const auto engine = Engine()) engine->OnRemoveAnnotation(annotation);
}

void EngineForwarder::OnAnnotationModified(const du::SmartPtr<zrk::Annotation>& annotation, bool modified) {
    if (const auto engine = Engine()) engine->OnAnnotationModified(annotation, modified);
}

void EngineForwarder::OnViewTimeout(const du::SmartPtr<zrk::ShapeView>& view, dg::Camera3D& lastChecked) {
    if (const auto engine = EngineOf(view)) engine->OnHandleTimeoutEvent(view, lastChecked);
}

void EngineForwarder::OnBackgroundColorChanged(const du::SmartPtr<zrk::ShapeView>& view) {
    if (const auto engine = EngineOf(view)) engine->OnBackgroundColor(view);
}

void EngineForwarder::OnWindowSizeChanged(const du::SmartPtr<zrk::ShapeView>& view) {
    if (const auto engine = EngineOf(view)) engine->OnWindowSize();
}

void EngineForwarder::OnSceneClosed() {
    if (const auto engine = Engine()) engine->OnSceneDestroy();
}

}  // namespace zrk::illustration
