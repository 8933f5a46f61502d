// What the user did, as steps that can be undone and done again together.

#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include "du/SmartPtr.h"
#include "zrk/object/Object.h"
#include "zrk/operation/OperationStep.h"

namespace zrk {

class Scene;

/// Steps may be added from any thread; undo and redo are the user's, one at a time.
class Operation : public Object {
public:
    /// Without one nothing can be taken back.
    static void* operator new(std::size_t size) noexcept { return MemoryPool::AllocateAnywhere(size); }
    static void operator delete(void* block, std::size_t size) noexcept { MemoryPool::Free(block, size); }

    /// `name` is what the user reads in the history.
    Operation(const std::string& name, const du::SmartPtr<Scene>& scene, bool undoable);
    ~Operation() override;

    void AddStep(const du::SmartPtr<OperationStep>& step);
    /// The last step first. `afterEach` is called after each step.
    void Undo(const std::function<void()>& afterEach = {});
    void Redo(const std::function<void()>& afterEach = {});
    /// Adds the steps of another operation, in order.
    void Append(const Operation& other);
    /// Whether there is a step that can be undone.
    bool HasUndo() const;
    /// Whether it is worth an entry in the history: undoable, with a step that can be recorded.
    bool IsRecordable() const;

    const std::string& GetName() const { return m_name; }
    const du::SmartPtr<Scene>& GetScene() const { return m_scene; }

private:
    std::vector<du::SmartPtr<OperationStep>> Steps() const;

    const std::string m_name;
    const du::SmartPtr<Scene> m_scene;
    const bool m_isUndoable;
    mutable std::mutex m_mutex;  // guards m_steps
    std::vector<du::SmartPtr<OperationStep>> m_steps;
};

/// Enters the operation into its scene's history; one without a recordable step leaves no entry. Any thread.
void RecordOperation(const du::SmartPtr<Operation>& operation);

}  // namespace zrk
