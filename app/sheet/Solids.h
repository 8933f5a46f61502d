// The model as solids, for readers who turn it themselves.

#pragma once

#include <vector>

#include "app/document/Document.h"
#include "app/sheet/Sheet.h"
#include "zrk/scene/PickScene.h"

namespace zrsheet {

/// One for each part that is shown, in the scene's order; geometry is shared, not copied. O(parts and items).
[[nodiscard]] std::vector<SheetSolid> SolidsOf(const Document& document, const zrk::PickScene& scene);

/// How `camera` looks.
[[nodiscard]] SheetCamera CameraOf(const dg::Camera3D& camera);

}  // namespace zrsheet
