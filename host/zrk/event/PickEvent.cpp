#include "zrk/event/PickEvent.h"

namespace zrk {

PickEvent::~PickEvent() = default;

}  // namespace zrk
