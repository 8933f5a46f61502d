#include "zrk/annotation/Annotation.h"

#include <utility>

#include "zrk/scene/Scene.h"
#include "zrk/world/Burst.h"

namespace zrk {
namespace {

unsigned NextId() {
    static std::atomic<unsigned> lastId{0};
    return ++lastId;
}

}  // namespace

constinit const ClassType Annotation::CLASS_TYPE(30, "zrk::Annotation", &Object::CLASS_TYPE);

Annotation::Annotation() : m_id(NextId()) {}

Annotation::~Annotation() = default;

du::SmartPtr<Scene> Annotation::GetScene() const {
    const std::lock_guard hold(m_sceneMutex);
    return m_scene ? m_scene->Lock() : du::SmartPtr<Scene>();
}

void Annotation::SetViewId(unsigned viewId) { m_viewId.store(viewId, std::memory_order_relaxed); }

void Annotation::Bind(std::shared_ptr<du::BackLink<Scene>> scene) {
    const std::lock_guard hold(m_sceneMutex);
    m_scene = std::move(scene);
}

void Annotation::KeepState() {
    if (const auto scene = GetScene()) scene->GetHistory().Keep(du::SmartPtr<Annotation>(this));
}

void Annotation::NotifyModified() {
    if (GetScene()) Burst::Note(this, [self = du::SmartPtr<Annotation>(this)] { self->TellModified(); });
}

void Annotation::TellModified() {
    const auto scene = GetScene();
    if (!scene) return;
    const du::SmartPtr<Annotation> self(this);
    scene->GetObservers().NotifyAll(
        [&](SceneObserver& observer) { observer.OnAnnotationModified(self, true); });
}

}  // namespace zrk
