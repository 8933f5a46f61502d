// Chooses where on a part a leader should end.

#pragma once

#include "dg/DPoint3D.h"
#include "du/SmartPtr.h"
#include "zrk/scene/ShapeInstance.h"
#include "zrk/scene/VisibilityMap.h"
#include "zrk/tree/BaseInstance.h"

namespace zrannotations {

/// The place where the scene's main view sees the part best: the middle of its largest visible area. Null
/// when it is nowhere seen, or in no scene with a view. The first call after a change of camera or parts
/// costs a ray per pixel.
const zrk::VisibleSpot* FindVisibleSpot(const zrk::VisibilityMap* map, const zrk::ShapeInstance& part);
/// The map of the main view of the part's scene, null without one.
std::shared_ptr<const zrk::VisibilityMap> VisibilityOf(const zrk::ShapeInstance& part);
/// The part that a leader to `part` should end on when it stands for an assembly (may be null): the part
/// itself, or, where that is nowhere seen, the part of the assembly that is seen best. O(parts of the
/// assembly) for a covered part.
du::SmartPtr<zrk::ShapeInstance> BestSeenPart(const du::SmartPtr<zrk::ShapeInstance>& part,
                                              const du::SmartPtr<zrk::BaseInstance>& assembly);
/// A point of the part in its local coordinates: where it is seen best, or for a covered part the middle of
/// the triangle that would show most. False when the part has no geometry. O(triangles) for a covered part.
bool FindAnchor(const zrk::ShapeInstance& part, dg::DPoint3D& anchor);

}  // namespace zrannotations
