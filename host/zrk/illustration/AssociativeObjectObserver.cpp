#include "zrk/illustration/AssociativeObjectObserver.h"

namespace zrk::illustration {

AssociativeObjectObserver::~AssociativeObjectObserver() = default;

}  // namespace zrk::illustration
