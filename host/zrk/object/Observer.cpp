#include "zrk/object/Observer.h"

namespace zrk {

Observer::~Observer() = default;

}  // namespace zrk
