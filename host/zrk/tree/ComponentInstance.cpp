#include "zrk/tree/ComponentInstance.h"

namespace zrk {

ComponentInstance::~ComponentInstance() = default;

}  // namespace zrk
