// A way back to an owner that may go first: what is owned must neither keep its owner alive nor reach a dead
// one.

#pragma once

#include <mutex>

#include "du/LeafLock.h"
#include "du/SmartPtr.h"

namespace du {

/// Shared by the owner, who closes it in its destructor, and by all that it owns. Any thread.
template <class T>
class BackLink {
public:
    explicit BackLink(T* owner) : m_owner(owner) {}
    BackLink(const BackLink&) = delete;
    BackLink& operator=(const BackLink&) = delete;

    /// A counted reference to the owner; null once it is closed or being freed.
    SmartPtr<T> Lock() const {
        const std::lock_guard hold(m_mutex);
        // An owner whose count has fallen to zero is about to be freed and must not be taken up again.
        if (m_owner == nullptr || !m_owner->TryAddReference(this)) return nullptr;
        return SmartPtr<T>::Adopt(m_owner);
    }

    /// Called by the owner's destructor before anything of it goes; waits for a Lock that is under way.
    void Close() {
        const std::lock_guard hold(m_mutex);
        m_owner = nullptr;
    }

private:
    mutable LeafLock m_mutex;
    T* m_owner;
};

}  // namespace du
