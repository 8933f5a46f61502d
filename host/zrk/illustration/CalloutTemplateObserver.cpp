#include "zrk/illustration/CalloutTemplateObserver.h"

namespace zrk::illustration {

CalloutTemplateObserver::~CalloutTemplateObserver() = default;

}  // namespace zrk::illustration
