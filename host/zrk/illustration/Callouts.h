// What every callouts engine brings along: it belongs to a scene and hears of what happens there.

#pragma once

#include <memory>
#include <mutex>
#include <set>

#include "dg/Camera3D.h"
#include "du/SmartPtr.h"
#include "zrk/annotation/AnnoSet.h"
#include "zrk/annotation/Annotation.h"
#include "zrk/illustration/SbomInstance.h"
#include "zrk/object/ObjectWithRWLock.h"
#include "zrk/scene/ShapeInstance.h"
#include "zrk/scene/ShapeScene.h"
#include "zrk/scene/ShapeView.h"

namespace zrannotations {
class Callout;
}

namespace zrk::illustration {

class EngineForwarder;

/// Notifications come on the thread that made the change. What is not overridden does nothing.
class Callouts : public zrk::ObjectWithRWLock {
public:
    /// With a lock of its own.
    Callouts();
    explicit Callouts(const du::SmartPtr<zrk::ReadWriteLock>& lock);
    ~Callouts() override;

    /// Joins the scene: the engine is found there by CalloutEngineMgr, which keeps it alive, and hears of its
    /// changes.
    virtual void Initialize(const du::SmartPtr<zrk::ShapeScene>& scene);
    /// The views' timers, sizes and background colours reach the engine from then on.
    virtual void InitializeShapeViewObserver();
    virtual void OnSceneDestroy();
    virtual void OnShapeInstanceLocation(const du::SmartPtr<zrk::ShapeInstance>&) {}
    virtual void OnShapeInstanceVisibility(const du::SmartPtr<zrk::ShapeInstance>&, bool) {}
    virtual void OnShapeInstanceCreate(const du::SmartPtr<zrk::ShapeInstance>&) {}
    virtual void OnShapeInstanceRemove(const du::SmartPtr<zrk::ShapeInstance>&) {}
    virtual void OnAddAnnotation(const du::SmartPtr<zrk::Annotation>&) {}
    virtual void OnRemoveAnnotation(const du::SmartPtr<zrk::Annotation>&) {}
    virtual void OnAnnotationModified(const du::SmartPtr<zrk::Annotation>&, bool) {}
    virtual void OnHandleTimeoutEvent(const du::SmartPtr<zrk::ShapeView>&, dg::Camera3D&) {}
    virtual void OnBackgroundColor(const du::SmartPtr<zrk::ShapeView>&) {}
    virtual void OnWindowSize() {}
    /// Leaves the scene and the manager. Requires: the caller holds a reference.
    virtual void Destroy();
    virtual void GetCalloutSetForSbomInstance(const du::SmartPtr<SbomInstance>& sbom,
                                              std::set<du::SmartPtr<zrannotations::Callout>>& out) = 0;

    /// Null before Initialize and after Destroy. Any thread.
    du::SmartPtr<zrk::ShapeScene> GetScene() const;
    du::SmartPtr<zrk::AnnoSet> GetAnnoSet() const;

protected:
    virtual void UnregisterObservers();

private:
    mutable std::mutex m_sceneMutex;  // guards the three below
    du::SmartPtr<zrk::ShapeScene> m_scene;
    du::SmartPtr<zrk::AnnoSet> m_annoSet;
    du::SmartPtr<EngineForwarder> m_forwarder;
};

}  // namespace zrk::illustration
