// Told about the instances of a tree.

#pragma once

#include "du/SmartPtr.h"
#include "zrk/object/Observer.h"

namespace zrk {

class Instance;

class BaseTreeObserver : public Observer {
public:
    ~BaseTreeObserver() override;

    virtual void OnInstanceInserted(const du::SmartPtr<Instance>&) {}
    virtual void OnInstanceDeleted(const du::SmartPtr<Instance>&) {}
    virtual void OnInstancePropertiesChanged(const du::SmartPtr<Instance>&) {}
    virtual void OnInstancePropertyValueChanged(const du::SmartPtr<Instance>&) {}
    virtual void OnTreeColumnsChanged() {}
};

}  // namespace zrk
