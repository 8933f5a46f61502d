// Told about the annotation sets of the application.

#pragma once

#include "dom/Observer.h"
#include "du/SmartPtr.h"

namespace zrk {

class AnnoSet;

class AnnoSetTableObserver : public dom::Observer {
public:
    virtual void OnBeginUpdate() {}
    virtual void OnEndUpdate() {}
    virtual void OnAnnoSetAdded(const du::SmartPtr<AnnoSet>&) {}
    virtual void OnAnnoSetRemoved(const du::SmartPtr<AnnoSet>&) {}
    virtual void OnAnnoSetChanged(const du::SmartPtr<AnnoSet>&) {}

    ~AnnoSetTableObserver() override;
};

}  // namespace zrk
