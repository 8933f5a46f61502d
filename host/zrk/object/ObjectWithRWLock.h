// An object with a reader-writer lock of its own or a shared one.

#pragma once

#include "du/SmartPtr.h"
#include "zrk/object/Object.h"
#include "zrk/object/ReadWriteLock.h"

namespace zrk {

class ObjectWithRWLock : public Object {
public:
    /// Without a lock the object runs unlocked.
    explicit ObjectWithRWLock(const du::SmartPtr<ReadWriteLock>& lock);
    ~ObjectWithRWLock() override;

    /// Null when the object runs unlocked.
    dp::ReadWriteLock* GetRWLockPtr() const { return m_lock ? m_lock->Get() : nullptr; }

private:
    const du::SmartPtr<ReadWriteLock> m_lock;
};

}  // namespace zrk
