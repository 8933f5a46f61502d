// Told about a scene: its parts, its annotations and its views.

#pragma once

#include "dg/Camera3D.h"
#include "dom/Observer.h"
#include "du/SmartPtr.h"

namespace zrk {

class Annotation;
class ShapeInstance;
class ShapeView;

/// Told on the thread that made the change, with no lock of the scene held.
class SceneObserver : public dom::Observer {
public:
    ~SceneObserver() override;

    virtual void OnShapeInstanceCreated(const du::SmartPtr<ShapeInstance>&) {}
    virtual void OnShapeInstanceMoved(const du::SmartPtr<ShapeInstance>&) {}
    virtual void OnShapeInstanceVisibilityChanged(const du::SmartPtr<ShapeInstance>&, bool) {}
    virtual void OnShapeInstanceRemoved(const du::SmartPtr<ShapeInstance>&) {}
    virtual void OnAnnotationAdded(const du::SmartPtr<Annotation>&) {}
    virtual void OnAnnotationRemoved(const du::SmartPtr<Annotation>&) {}
    virtual void OnAnnotationModified(const du::SmartPtr<Annotation>&, bool) {}
    /// The view's timer ran off; `lastChecked` is the view's record, to be brought up to date by who uses it.
    virtual void OnViewTimeout(const du::SmartPtr<ShapeView>&, dg::Camera3D&) {}
    virtual void OnBackgroundColorChanged(const du::SmartPtr<ShapeView>&) {}
    virtual void OnWindowSizeChanged(const du::SmartPtr<ShapeView>&) {}
    /// The scene closes; whatever belongs to it is let go.
    virtual void OnSceneClosed() {}
};

}  // namespace zrk
