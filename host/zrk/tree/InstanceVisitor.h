// A visitor of engineering instances.

#pragma once

#include "zrk/tree/BaseInstanceVisitor.h"

namespace zrk {

class InstanceVisitor : public BaseInstanceVisitor {
public:
    ~InstanceVisitor() override;
};

}  // namespace zrk
