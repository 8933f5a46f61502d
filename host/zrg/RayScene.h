// Answers which part a ray meets first. Parts are placed shapes; a shape used many times is stored once.

#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "dg/Camera3D.h"
#include "dg/Location.h"
#include "dg/Ray.h"
#include "du/SmartPtr.h"
#include "zrg/Shape.h"

namespace zrg {

/// What a ray met. In world coordinates where nothing else is said.
struct RayHit {
    static constexpr std::uint32_t kNothing = 0xFFFFFFFFU;

    std::uint32_t placement = kNothing;  // as returned by RayScene::Add
    std::uint32_t triangle = 0;          // of the placed shape
    double distance = 0.0;               // along the ray
    dg::DPoint3D point;
    dg::DVec3 normal;  // of the triangle, of any length, in the placed shape's coordinates; see NormalToWorld
    float u = 0.0F;    // share of the triangle's second corner in the point
    float v = 0.0F;    // share of its third corner

    explicit operator bool() const { return placement != kNothing; }
};

/// Build once (Add, then Commit), then ask from any thread. A ray costs O(log triangles).
class RayScene {
public:
    /// The masks of rays and placements: a ray meets a placement when they share a bit.
    static constexpr std::uint32_t kEverything = 0xFFFFFFFFU;

    /// What `former` found out about shapes is used again, so that a scene in which a few parts were moved
    /// costs little. `former` is needed until Commit has returned.
    explicit RayScene(const RayScene* former = nullptr);
    RayScene(const RayScene&) = delete;
    RayScene& operator=(const RayScene&) = delete;
    ~RayScene();

    /// Places a shape; returns the number of the placement, counted from 0.
    std::uint32_t Add(const du::SmartPtr<Shape>& shape, const dg::Location& location,
                      std::uint32_t mask = kEverything);
    /// Makes what was added ready for rays. Shapes that are new are shared out among all cores.
    void Commit();

    /// The nearest hit, or none.
    RayHit Nearest(const dg::Ray& ray, std::uint32_t mask = kEverything) const;
    /// The nearest hit on one placement, whatever lies before it.
    RayHit NearestOf(const dg::Ray& ray, std::uint32_t placement) const;
    /// Is anything met between two distances along the ray? Cheaper than the nearest hit.
    bool IsBlocked(const dg::Ray& ray, double from, double to) const;
    /// Fills `hits` with the nearest hits of the camera's rays at (x + i * step, y). Cheaper than ray by ray.
    void NearestRow(const dg::Camera3D& camera, double x, double y, double step, std::span<RayHit> hits,
                    std::uint32_t mask = kEverything) const;

    std::uint32_t GetPlacementCount() const;
    const Shape& GetShape(std::uint32_t placement) const;
    const dg::DMat44& GetToWorld(std::uint32_t placement) const;
    /// A normal of the placed shape in world coordinates, length 1; its sign follows the winding.
    dg::DVec3 NormalToWorld(std::uint32_t placement, const dg::DVec3& normal) const;

private:
    class Impl;
    std::unique_ptr<Impl> m_impl;
};

}  // namespace zrg
