#include "zrk/tree/BaseInstanceVisitor.h"

#include "zrk/tree/Instance.h"

namespace zrk {

BaseInstanceVisitor::~BaseInstanceVisitor() = default;

bool BaseInstanceVisitor::Visit(const du::SmartPtr<BaseInstance>& instance) {
    const auto engineering = du::DynamicCast<Instance>(instance);
    return !engineering || VisitInstance(engineering);
}

}  // namespace zrk
