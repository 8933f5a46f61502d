// What the user did in a scene and can undo.

#pragma once

#include <cstddef>
#include <mutex>
#include <string>
#include <vector>

#include "du/SmartPtr.h"

namespace zrk {

class Operation;

/// Operations may be recorded from any thread.
class History {
public:
    History();
    ~History();

    /// A new entry; what was undone can no longer be done again.
    void Record(const du::SmartPtr<Operation>& operation);
    /// False when there is nothing to undo.
    bool Undo();
    bool Redo();
    /// The name of the operation that Undo would undo, "" when there is none.
    std::string GetUndoName() const;
    std::size_t GetUndoCount() const;
    std::size_t GetRedoCount() const;
    /// Forgets everything. Operations hold their scene, so a scene that closes clears its history.
    void Clear();

private:
    mutable std::mutex m_mutex;  // guards all below; not held while an operation runs
    std::vector<du::SmartPtr<Operation>> m_done;
    std::vector<du::SmartPtr<Operation>> m_undone;
};

}  // namespace zrk
