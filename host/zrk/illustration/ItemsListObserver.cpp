#include "zrk/illustration/ItemsListObserver.h"

#include "zrk/illustration/SbomInstance.h"

namespace zrk::illustration {

ItemsListObserver::~ItemsListObserver() = default;

}  // namespace zrk::illustration
