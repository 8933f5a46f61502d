// Holds a reader-writer lock for reading while in scope.

#pragma once

#include "dp/ReadWriteLock.h"

namespace dp {

class ReadLocker {
public:
    /// A null lock means that there is nothing to hold.
    explicit ReadLocker(ReadWriteLock* lock) : m_lock(lock) {
        if (m_lock != nullptr) m_lock->ReadLock();
    }
    ReadLocker(const ReadLocker&) = delete;
    ReadLocker& operator=(const ReadLocker&) = delete;
    ~ReadLocker() {
        if (m_lock != nullptr) m_lock->ReadUnlock();
    }

private:
    ReadWriteLock* m_lock;
};

}  // namespace dp
