#include "zrk/illustration/CalloutEngineMgr.h"

#include <utility>

namespace zrk::illustration {

CalloutEngineMgr& CalloutEngineMgr::Instance() {
    static auto& manager = *new CalloutEngineMgr;  // never freed: engines in static storage leave late
    return manager;
}

du::SmartPtr<Callouts> CalloutEngineMgr::GetCalloutsEngineForScene(
    const du::SmartPtr<zrk::ShapeScene>& scene) const {
    const std::lock_guard hold(m_mutex);
    const auto entry = m_engines.find(scene.get());
    return entry != m_engines.end() ? entry->second : du::SmartPtr<Callouts>();
}

void CalloutEngineMgr::Register(const du::SmartPtr<zrk::ShapeScene>& scene, Callouts* engine) {
    du::SmartPtr<Callouts> replaced(engine);  // released after the lock
    const std::lock_guard hold(m_mutex);
    std::swap(m_engines[scene.get()], replaced);
}

void CalloutEngineMgr::Unregister(const du::SmartPtr<zrk::ShapeScene>& scene, const Callouts* engine) {
    du::SmartPtr<Callouts> removed;
    const std::lock_guard hold(m_mutex);
    const auto entry = m_engines.find(scene.get());
    if (entry == m_engines.end() || entry->second.get() != engine) return;
    removed = std::move(entry->second);
    m_engines.erase(entry);
}

}  // namespace zrk::illustration
