#include "zrk/illustration/Callouts.h"

#include <utility>

#include "zrk/illustration/CalloutEngineMgr.h"
#include "zrk/illustration/EngineForwarder.h"

namespace zrk::illustration {

Callouts::Callouts() : Callouts(du::SmartPtr<zrk::ReadWriteLock>(new zrk::ReadWriteLock)) {}

Callouts::Callouts(const du::SmartPtr<zrk::ReadWriteLock>& lock) : zrk::ObjectWithRWLock(lock) {}

Callouts::~Callouts() = default;

void Callouts::Initialize(const du::SmartPtr<zrk::ShapeScene>& scene) {
    if (!scene) return;
    // A constructor may call this, while nobody holds the engine yet; the manager's reference comes first of
    // all.
    CalloutEngineMgr::Instance().Register(scene, this);
    const du::SmartPtr<EngineForwarder> forwarder(new EngineForwarder(scene));
    {
        const std::lock_guard hold(m_sceneMutex);
        m_scene = scene;
        scene->GetAnnoSet(m_annoSet);
        m_forwarder = forwarder;
    }
    scene->RegisterObserver(forwarder);
}

void Callouts::InitializeShapeViewObserver() {
    const std::lock_guard hold(m_sceneMutex);
    if (m_forwarder) m_forwarder->ForwardViews();
}

void Callouts::UnregisterObservers() {
    du::SmartPtr<EngineForwarder> forwarder;
    {
        const std::lock_guard hold(m_sceneMutex);
        std::swap(forwarder, m_forwarder);
    }
    const auto scene = GetScene();
    if (scene && forwarder) scene->UnregisterObserver(forwarder);
}

void Callouts::OnSceneDestroy() { Destroy(); }

void Callouts::Destroy() {
    du::SmartPtr<zrk::ShapeScene> scene;
    du::SmartPtr<zrk::AnnoSet> annoSet;
    {
        const std::lock_guard hold(m_sceneMutex);
        std::swap(scene, m_scene);
        std::swap(annoSet, m_annoSet);
    }
    if (scene) CalloutEngineMgr::Instance().Unregister(scene, this);
}

du::SmartPtr<zrk::ShapeScene> Callouts::GetScene() const {
    const std::lock_guard hold(m_sceneMutex);
    return m_scene;
}

du::SmartPtr<zrk::AnnoSet> Callouts::GetAnnoSet() const {
    const std::lock_guard hold(m_sceneMutex);
    return m_annoSet;
}

}  // namespace zrk::illustration
