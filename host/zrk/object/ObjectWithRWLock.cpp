#include "zrk/object/ObjectWithRWLock.h"

namespace zrk {

ObjectWithRWLock::ObjectWithRWLock(const du::SmartPtr<ReadWriteLock>& lock) : m_lock(lock) {}

ObjectWithRWLock::~ObjectWithRWLock() = default;

}  // namespace zrk
