#include "zrk/world/MultiRootContainer.h"

namespace zrk {

MultiRootContainer::~MultiRootContainer() = default;

}  // namespace zrk
