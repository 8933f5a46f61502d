#include "zrannotations/InsetObserver.h"

namespace zrannotations {

InsetObserver::~InsetObserver() = default;

}  // namespace zrannotations
