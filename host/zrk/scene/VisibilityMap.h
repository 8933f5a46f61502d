// Where each part of a scene can be seen from a camera, and where best.

#pragma once

#include <cstddef>
#include <unordered_map>

#include "dg/Camera3D.h"
#include "dg/DPoint3D.h"
#include "zrk/scene/PickScene.h"
#include "zrk/scene/ShapeInstance.h"

namespace zrk {

/// The pixel deepest inside the largest connected area in which a part is seen.
struct VisibleSpot {
    int x = 0;
    int y = 0;
    dg::DPoint3D world;    // the point of the part's surface there
    std::size_t area = 0;  // pixels of that area
    int depth = 0;         // steps to the area's border, 1 on the border
};

/// Never changes once built, so any thread may ask. Building casts a ray per pixel.
class VisibilityMap {
public:
    VisibilityMap(const PickScene& scene, const dg::Camera3D& camera);

    /// Null for a part that is nowhere seen. O(1).
    const VisibleSpot* Find(const ShapeInstance& part) const;

private:
    std::unordered_map<const ShapeInstance*, VisibleSpot> m_spots;
};

}  // namespace zrk
