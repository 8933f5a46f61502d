// The component's only entry points: the host loads the library by name and asks for an engine by three
// words.

#pragma once

#include <string>

#include "callouts/Callouts.h"
#include "callouts/ZrcalloutsExport.h"
#include "du/RefCounted.h"
#include "du/SmartPtr.h"
#include "zrk/scene/ShapeScene.h"

extern "C" {

/// Loading has no side effects. Any number of times, in any order with ZRDllTerminate.
ZRCALLOUTS_API void ZRDllInit();
/// Unloading has none either.
ZRCALLOUTS_API void ZRDllTerminate();
/// The version that the component was built as, such as "1.2.3". A host refuses any but its own: objects of
/// the component are laid out for it.
ZRCALLOUTS_API const char* ZRDllVersion();
/// For "create", "callouts", "calloutengine" (exactly so) puts a new engine without scene into `out`,
/// releasing what it held, and returns true; `out` is null then when the pool is exhausted. Other words:
/// false, `out` untouched.
ZRCALLOUTS_API bool ZRDllCreateComponent(const std::string& verb, const std::string& family,
                                         const std::string& kind, du::SmartPtr<du::RefCounted>& out);
}

namespace zrcallouts {

/// The engine that is attached to the scene, null when there is none. Never makes one. O(1). Any thread.
ZRCALLOUTS_API du::SmartPtr<Callouts> GetCalloutsEngineForScene(const du::SmartPtr<zrk::ShapeScene>& scene);

}  // namespace zrcallouts
