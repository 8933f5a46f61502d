// A change outside the host's objects, such as a setting of the document, as a step that can be undone.

#pragma once

#include <functional>

#include "zrk/operation/OperationStep.h"

namespace zrsheet {

class ActionStep : public zrk::OperationStep {
public:
    using Action = std::function<void()>;

    ActionStep(Action undo, Action redo);
    ~ActionStep() override;

    const char* GetDebugClassName() const override { return "zrsheet::ActionStep"; }
    void Undo() override { m_undo(); }
    void Redo() override { m_redo(); }

private:
    const Action m_undo;
    const Action m_redo;
};

}  // namespace zrsheet
