// A reader-writer lock that several objects may share.

#pragma once

#include "dp/ReadWriteLock.h"
#include "du/RefCounted.h"
#include "zrk/object/MemoryPoolAllocated.h"

namespace zrk {

class ReadWriteLock : public MemoryPoolAllocated, public virtual du::RefCounted {
public:
    ~ReadWriteLock() override;

    dp::ReadWriteLock* Get() const { return &m_lock; }

private:
    mutable dp::ReadWriteLock m_lock;
};

}  // namespace zrk
