// What is called for the instances of a tree.

#pragma once

#include "du/SmartPtr.h"

namespace zrk {

class BaseInstance;
class Instance;

class BaseInstanceVisitor {
public:
    /// The walk's driver: hands engineering instances on. False stops the walk.
    virtual bool Visit(const du::SmartPtr<BaseInstance>& instance);
    virtual ~BaseInstanceVisitor();
    virtual bool VisitInstance(const du::SmartPtr<Instance>& instance) = 0;
};

}  // namespace zrk
