// The visible parts of a scene at one revision, ready to be hit by rays.

#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "dg/Camera3D.h"
#include "dg/Ray.h"
#include "du/Flags.h"
#include "du/SmartPtr.h"
#include "zrg/RayScene.h"
#include "zrk/event/PickResult.h"
#include "zrk/scene/ShapeInstance.h"

namespace zrk {

/// Never changes once built, so any thread may ask. Parts that are hidden or have no geometry are not met.
class PickScene {
public:
    /// `former`, which may be null, is an earlier one of the same scene: what is as it was costs less.
    PickScene(const std::vector<du::SmartPtr<ShapeInstance>>& parts, const PickScene* former);

    /// What the ray meets first: one result, or none.
    std::vector<PickResult> Pick(const dg::Ray& ray, du::Flags flags) const;
    /// The same with only one part in the world.
    std::vector<PickResult> PickOnly(const ShapeInstance& part, const dg::Ray& ray, du::Flags flags) const;

    const zrg::RayScene& GetRays() const { return m_rays; }
    /// The parts by the number of their placement in the ray scene.
    const std::vector<du::SmartPtr<ShapeInstance>>& GetParts() const { return m_parts; }

private:
    std::vector<PickResult> ResultOf(const zrg::RayHit& hit) const;

    zrg::RayScene m_rays;
    std::vector<du::SmartPtr<ShapeInstance>> m_parts;
    std::unordered_map<const ShapeInstance*, std::uint32_t> m_placements;
};

}  // namespace zrk
