#include "zrk/scene/SceneObserver.h"

namespace zrk {

SceneObserver::~SceneObserver() = default;

}  // namespace zrk
