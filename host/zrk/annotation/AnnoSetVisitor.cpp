#include "zrk/annotation/AnnoSetVisitor.h"

namespace zrk {

AnnoSetVisitor::~AnnoSetVisitor() = default;

}  // namespace zrk
