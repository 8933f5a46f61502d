// Detaches the callouts of an engine that left its scene, off the user's thread.

#pragma once

#include "callouts/Callouts.h"
#include "du/Task.h"

namespace zrcallouts {

class DestroyCalloutsTask : public du::Task {
public:
    /// Takes over the containers of the engine, which nobody else can reach any more.
    DestroyCalloutsTask(Callouts::InsetMap insetCallouts, Callouts::CalloutSet callouts);
    ~DestroyCalloutsTask() override;

    void Run() override;

private:
    Callouts::InsetMap m_insetCallouts;
    Callouts::CalloutSet m_callouts;
};

}  // namespace zrcallouts
