// Holds the one object of its kind that a process has at a time.

#pragma once

#include <mutex>
#include <utility>

#include "du/LeafLock.h"
#include "du/SmartPtr.h"

namespace du {

/// Any thread.
template <class T>
class ProcessWide {
public:
    /// Null while there is none.
    SmartPtr<T> Get() const {
        const std::lock_guard hold(m_lock);
        return m_object;
    }
    /// Returns the former object, which the caller releases.
    SmartPtr<T> Exchange(SmartPtr<T> object) {
        const std::lock_guard hold(m_lock);
        std::swap(m_object, object);
        return object;
    }

private:
    mutable LeafLock m_lock;  // guards m_object
    SmartPtr<T> m_object;
};

}  // namespace du
