// The ray tracer alone, which is the limit of every pick: placed shapes, and rays into them.

#pragma once

#include <embree3/rtcore.h>

#include <map>
#include <vector>

#include "dg/Location.h"
#include "dg/Ray.h"
#include "zrg/Shape.h"

namespace zrbench {

/// Add, then Commit, then ask. What it holds is freed with the process.
class Tracer {
public:
    Tracer();

    /// A shape placed many times is built once.
    void Add(const zrg::Shape& shape, const dg::Location& location);
    void Commit() { rtcCommitScene(m_scene); }

    static RTCRayHit RayOf(const dg::Ray& ray);
    bool Meets(RTCRayHit ray) const;

private:
    RTCScene NewScene() const;
    RTCScene Build(const zrg::Shape& shape) const;

    RTCDevice m_device;
    RTCScene m_scene;
    std::map<const zrg::Shape*, RTCScene> m_shapes;
};

}  // namespace zrbench
