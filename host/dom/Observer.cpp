#include "dom/Observer.h"

namespace dom {

Observer::~Observer() = default;

}  // namespace dom
