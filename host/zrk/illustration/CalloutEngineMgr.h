// Knows the callouts engine of each scene.

#pragma once

#include <mutex>
#include <unordered_map>

#include "du/SmartPtr.h"
#include "zrk/illustration/Callouts.h"

namespace zrk::illustration {

/// Holds engines counted, one a scene, from Register to Unregister. Any thread; O(1).
class CalloutEngineMgr {
public:
    static CalloutEngineMgr& Instance();

    /// Null when the scene has none.
    du::SmartPtr<Callouts> GetCalloutsEngineForScene(const du::SmartPtr<zrk::ShapeScene>& scene) const;
    /// Replaces an engine that was registered before.
    void Register(const du::SmartPtr<zrk::ShapeScene>& scene, Callouts* engine);
    /// Nothing when another engine has taken the place.
    void Unregister(const du::SmartPtr<zrk::ShapeScene>& scene, const Callouts* engine);

private:
    CalloutEngineMgr() = default;

    mutable std::mutex m_mutex;  // guards m_engines
    std::unordered_map<const zrk::ShapeScene*, du::SmartPtr<Callouts>> m_engines;
};

}  // namespace zrk::illustration
