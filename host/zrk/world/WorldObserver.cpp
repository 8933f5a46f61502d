#include "zrk/world/WorldObserver.h"

namespace zrk {

WorldObserver::~WorldObserver() = default;

}  // namespace zrk
