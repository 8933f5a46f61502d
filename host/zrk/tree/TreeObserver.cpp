#include "zrk/tree/TreeObserver.h"

namespace zrk {

TreeObserver::~TreeObserver() = default;

}  // namespace zrk
