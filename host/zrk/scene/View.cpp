#include "zrk/scene/View.h"

#include "zrk/scene/Scene.h"

namespace zrk {

constinit const ClassType View::CLASS_TYPE(23, "zrk::View", &Object::CLASS_TYPE);

View::View(const du::SmartPtr<Scene>& scene, unsigned viewId) : m_scene(scene->GetLink()), m_viewId(viewId) {}

View::~View() = default;

du::SmartPtr<Scene> View::GetScene() const { return m_scene->Lock(); }

}  // namespace zrk
