#include "zrk/tree/InstanceVisitor.h"

namespace zrk {

InstanceVisitor::~InstanceVisitor() = default;

}  // namespace zrk
