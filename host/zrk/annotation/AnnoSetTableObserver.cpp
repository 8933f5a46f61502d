#include "zrk/annotation/AnnoSetTableObserver.h"

namespace zrk {

AnnoSetTableObserver::~AnnoSetTableObserver() = default;

}  // namespace zrk
