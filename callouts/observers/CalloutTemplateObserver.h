// Rebuilds one callout's label when its template was edited.

#pragma once

#include <memory>

#include "callouts/observers/EngineHandle.h"
#include "du/LeafLock.h"
#include "zrannotations/Callout.h"
#include "zrk/illustration/CalloutTemplateObserver.h"

namespace zrcallouts {

class CalloutTemplateObserver : public zrk::illustration::CalloutTemplateObserver {
public:
    CalloutTemplateObserver(zrannotations::Callout* callout, std::shared_ptr<EngineHandle> handle)
        : m_callout(callout), m_owner(std::move(handle)) {}
    ~CalloutTemplateObserver() override;

    int OnDestroy() override;
    void OnTemplateModified() override;

private:
    du::SmartPtr<zrannotations::Callout> LockCallout() const;

    // Guards m_callout. The callout's destructor calls OnDestroy, which waits here until a reference that is
    // just being taken is safe.
    mutable du::LeafLock m_mutex;
    zrannotations::Callout* m_callout;
    EngineLink m_owner;
};

}  // namespace zrcallouts
