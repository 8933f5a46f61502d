#include "zrkapp/illustration/IllMultiRootContainer.h"

namespace zrkapp::illustration {

IllMultiRootContainer::~IllMultiRootContainer() = default;

}  // namespace zrkapp::illustration
