// A window onto a scene.

#pragma once

#include <atomic>
#include <memory>

#include "du/BackLink.h"
#include "du/SmartPtr.h"
#include "zrk/object/Object.h"

namespace zrk {

class Scene;

/// Any thread.
class View : public Object {
public:
    static const ClassType CLASS_TYPE;

    /// The view does not enter itself into the scene: Scene::AddView does.
    View(const du::SmartPtr<Scene>& scene, unsigned viewId);
    ~View() override;

    const ClassType& GetClassType() const override { return CLASS_TYPE; }

    /// Null once the scene is gone.
    du::SmartPtr<Scene> GetScene() const;
    unsigned GetViewId() const { return m_viewId; }
    /// Asks for a new picture, or says that it was drawn.
    void SetDirty(bool dirty = true) { m_isDirty.store(dirty, std::memory_order_relaxed); }
    bool IsDirty() const { return m_isDirty.load(std::memory_order_relaxed); }

private:
    const std::shared_ptr<du::BackLink<Scene>> m_scene;
    const unsigned m_viewId;
    std::atomic<bool> m_isDirty{true};  // alone: no other field goes with it
};

}  // namespace zrk
