#include "app/document/ActionStep.h"

#include <utility>

namespace zrsheet {

ActionStep::ActionStep(Action undo, Action redo) : m_undo(std::move(undo)), m_redo(std::move(redo)) {}

ActionStep::~ActionStep() = default;

}  // namespace zrsheet
