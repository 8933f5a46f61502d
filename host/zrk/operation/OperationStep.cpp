#include "zrk/operation/OperationStep.h"

namespace zrk {

OperationStep::~OperationStep() = default;

du::Symbol OperationStep::Type() const {
    static const du::Symbol kType("OperationStep");
    return kType;
}

}  // namespace zrk
