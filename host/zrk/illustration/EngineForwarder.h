// Carries what happens in a scene to the scene's callouts engine.

#pragma once

#include <atomic>
#include <memory>

#include "du/BackLink.h"
#include "zrk/illustration/Callouts.h"
#include "zrk/scene/SceneObserver.h"

namespace zrk::illustration {

/// The engine is looked up anew for each notification, so that one that is being freed is never reached.
class EngineForwarder : public zrk::SceneObserver {
public:
    explicit EngineForwarder(const du::SmartPtr<zrk::ShapeScene>& scene);
    ~EngineForwarder() override;

    /// The views' notifications are carried too from then on.
    void ForwardViews() { m_forwardsViews.store(true, std::memory_order_relaxed); }

    void OnShapeInstanceCreated(const du::SmartPtr<zrk::ShapeInstance>& part) override;
    void OnShapeInstanceMoved(const du::SmartPtr<zrk::ShapeInstance>& part) override;
    void OnShapeInstanceVisibilityChanged(const du::SmartPtr<zrk::ShapeInstance>& part,
                                          bool visible) override;
    void OnShapeInstanceRemoved(const du::SmartPtr<zrk::ShapeInstance>& part) override;
    void OnAnnotationAdded(const du::SmartPtr<zrk::Annotation>& annotation) override;
    void OnAnnotationRemoved(const du::SmartPtr<zrk::Annotation>& annotation) override;
    void OnAnnotationModified(const du::SmartPtr<zrk::Annotation>& annotation, bool modified) override;
    void OnViewTimeout(const du::SmartPtr<zrk::ShapeView>& view, dg::Camera3D& lastChecked) override;
    void OnBackgroundColorChanged(const du::SmartPtr<zrk::ShapeView>& view) override;
    void OnWindowSizeChanged(const du::SmartPtr<zrk::ShapeView>& view) override;
    void OnSceneClosed() override;

private:
    du::SmartPtr<Callouts> Engine() const;
    du::SmartPtr<Callouts> EngineOf(const du::SmartPtr<zrk::ShapeView>& view) const;

    const std::shared_ptr<du::BackLink<zrk::Scene>> m_scene;
    std::atomic<bool> m_forwardsViews{false};
};

}  // namespace zrk::illustration
