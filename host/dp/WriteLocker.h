// Holds a reader-writer lock for writing while in scope.

#pragma once

#include "dp/ReadWriteLock.h"

namespace dp {

class WriteLocker {
public:
    /// A null lock means that there is nothing to hold.
    explicit WriteLocker(ReadWriteLock* lock) : m_lock(lock) {
        if (m_lock != nullptr) m_lock->WriteLock();
    }
    WriteLocker(const WriteLocker&) = delete;
    WriteLocker& operator=(const WriteLocker&) = delete;
    ~WriteLocker() {
        if (m_lock != nullptr) m_lock->WriteUnlock();
    }

private:
    ReadWriteLock* m_lock;
};

}  // namespace dp
