// Creates the callouts for a selection off the user's thread.

#pragma once

#include <vector>

#include "callouts/Callouts.h"
#include "du/Task.h"
#include "zrk/event/AsyncEvent.h"
#include "zrk/illustration/SbomInstanceSelectionItem.h"

namespace zrcallouts {

class CreateCalloutsTask : public du::Task {
public:
    using Selection = std::vector<du::SmartPtr<zrk::illustration::SbomInstanceSelectionItem>>;

    CreateCalloutsTask(du::SmartPtr<Callouts> engine, Selection selection,
                       du::SmartPtr<zrk::AsyncEvent> event);
    ~CreateCalloutsTask() override;

    const char* GetName() const override { return "zrcallouts::CreateCalloutsTask"; }
    /// Completes the event at the end, whether or not there was anything to create.
    void Run() override;

private:
    du::SmartPtr<Callouts> m_callouts;
    Selection m_selection;
    du::SmartPtr<zrk::AsyncEvent> m_event;
};

}  // namespace zrcallouts
