#include "zrk/object/ReadWriteLock.h"

namespace zrk {

ReadWriteLock::~ReadWriteLock() = default;

}  // namespace zrk
