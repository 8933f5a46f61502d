#include "du/Task.h"

namespace du {

Task::~Task() = default;

}  // namespace du
