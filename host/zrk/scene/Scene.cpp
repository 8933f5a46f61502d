#include "zrk/scene/Scene.h"

#include <algorithm>

#include "zrk/annotation/AnnoSet.h"
#include "zrk/object/Checked.h"
#include "zrk/scene/View.h"

namespace zrk {

constinit const ClassType Scene::CLASS_TYPE(21, "zrk::Scene", &Object::CLASS_TYPE);

Scene::Scene()
    : m_link(std::make_shared<du::BackLink<Scene>>(this)),
      m_annoSet(Checked(new AnnoSet(m_link))),
      m_history(m_annoSet) {}

Scene::~Scene() { m_link->Close(); }

void Scene::GetView(du::SmartPtr<View>& out, unsigned index) const { out = GetView(index); }

du::SmartPtr<View> Scene::GetView(unsigned index) const {
    const std::lock_guard hold(m_mutex);
    return index < m_views.size() ? m_views[index] : du::SmartPtr<View>();
}

void Scene::AddView(const du::SmartPtr<View>& view) {
    const std::lock_guard hold(m_mutex);
    m_views.push_back(view);
}

bool Scene::HasView(const View& view) const {
    const std::lock_guard hold(m_mutex);
    return std::any_of(m_views.begin(), m_views.end(),
                       [&](const auto& entry) { return entry.get() == &view; });
}

void Scene::GetAnnoSet(du::SmartPtr<AnnoSet>& out) const { out = m_annoSet; }

void Scene::Close() {
    m_observers.NotifyAll([](SceneObserver& observer) { observer.OnSceneClosed(); });
    m_history.Clear();
    m_annoSet->Clear();
    std::vector<du::SmartPtr<View>> views;
    const std::lock_guard hold(m_mutex);
    views.swap(m_views);
}

}  // namespace zrk
