// Base of the observers of kernel objects. Everything does nothing unless overridden.

#pragma once

#include "dom/Observer.h"

namespace zrk {

class Observer : public dom::Observer {
public:
    ~Observer() override;

    /// Whether changes are to be framed by OnBeginUpdate and OnEndUpdate.
    virtual bool RequiresBeginEnd() const { return true; }
    /// The observed object goes. 0: handled.
    virtual int OnDestroy() { return 0; }
    virtual void OnBeginUpdate() {}
    virtual void OnEndUpdate() {}
    virtual void OnUnregister() {}
    virtual void HandleEvent() {}
};

}  // namespace zrk
