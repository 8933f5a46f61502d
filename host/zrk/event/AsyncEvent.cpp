#include "zrk/event/AsyncEvent.h"

namespace zrk {

AsyncEvent::~AsyncEvent() = default;

}  // namespace zrk
