#include "zrk/operation/CallStep.h"

#include <utility>

namespace zrk {

CallStep::CallStep(std::function<void()> undo, std::function<void()> redo)
    : m_undo(std::move(undo)), m_redo(std::move(redo)) {}

CallStep::~CallStep() = default;

}  // namespace zrk
