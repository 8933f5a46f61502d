// All of a scene that undo has to bring back, as text: two scenes are alike when their dumps are the same
// bytes.

#pragma once

#include <string>

#include "callouts/Callouts.h"
#include "zrk/illustration/Illustration3dScene.h"
#include "zrk/illustration/SbomInstance.h"

namespace zrcallouts {

/// Annotations in the order of the set with their states, what the engine files them under, items, parts,
/// view, and the properties of the structure below `root`.
std::string DumpScene(const zrk::illustration::Illustration3dScene& scene, Callouts& engine,
                      const du::SmartPtr<zrk::illustration::SbomInstance>& root);

}  // namespace zrcallouts
