#include "zrk/tree/BaseTreeObserver.h"

namespace zrk {

BaseTreeObserver::~BaseTreeObserver() = default;

}  // namespace zrk
