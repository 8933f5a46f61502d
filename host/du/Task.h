// Work for the task pool.

#pragma once

#include "du/RefCounted.h"

namespace du {

class Task : public virtual RefCounted {
public:
    virtual const char* GetName() const { return "du::Task"; }
    /// Higher runs first.
    virtual int GetPriority() const { return 0; }
    /// The work itself, on a thread of the pool.
    virtual void Run() = 0;
    /// After Run, on the same thread.
    virtual void TaskComplete() {}
    virtual void FlushResults() {}
    /// Instead of Run, when the pool shuts down first.
    virtual void Abort() {}
    ~Task() override;
};

}  // namespace du
