// One undoable change.

#pragma once

#include "dp/AtomicOps.h"
#include "dp/ObjectLevelLockable.h"
#include "du/RefCounted.h"
#include "du/Symbol.h"
#include "zrk/object/MemoryPoolAllocated.h"

namespace zrk {

class OperationStep : public dp::ObjectLevelLockable<OperationStep*>,
                      public dp::AtomicOps,
                      public MemoryPoolAllocated,
                      public virtual du::RefCounted {
public:
    ~OperationStep() override;

    /// A change that has been made must get its step.
    static void* operator new(std::size_t size) noexcept { return MemoryPool::AllocateAnywhere(size); }
    static void operator delete(void* block, std::size_t size) noexcept { MemoryPool::Free(block, size); }

    virtual const char* GetDebugClassName() const { return "zrk::OperationStep"; }
    /// Whether the step makes its operation worth an entry in the history.
    virtual bool Recordable() const { return true; }
    /// A step without undo stays done when its operation is undone, and is not done again.
    virtual bool HasUndo() const { return true; }
    virtual du::Symbol Type() const;
    virtual void Undo() = 0;
    virtual void Redo() = 0;
};

}  // namespace zrk
