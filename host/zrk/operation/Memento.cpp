#include "zrk/operation/Memento.h"

namespace zrk {

Memento::~Memento() = default;

}  // namespace zrk
