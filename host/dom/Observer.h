// Base of what is told about changes.

#pragma once

#include "dom/ManagedObject.h"

namespace dom {

class Observer : public ManagedObject {
public:
    ~Observer() override;
};

}  // namespace dom
