#include "zrkapp/illustration/KorvanAppObserver.h"

namespace zrkapp::illustration {

KorvanAppObserver::~KorvanAppObserver() = default;

}  // namespace zrkapp::illustration
