#include "zrk/tree/ComponentNode.h"

namespace zrk {

ComponentNode::~ComponentNode() = default;

}  // namespace zrk
