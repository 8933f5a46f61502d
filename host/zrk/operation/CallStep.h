// One undoable change that is two calls: one takes it back, the other does it again.

#pragma once

#include <functional>

#include "zrk/operation/OperationStep.h"

namespace zrk {

/// For changes that no class of their own has to be found by. The calls own what they need.
class CallStep : public OperationStep {
public:
    CallStep(std::function<void()> undo, std::function<void()> redo);
    ~CallStep() override;

    const char* GetDebugClassName() const override { return "zrk::CallStep"; }
    void Undo() override { m_undo(); }
    void Redo() override { m_redo(); }

private:
    const std::function<void()> m_undo;
    const std::function<void()> m_redo;
};

}  // namespace zrk
