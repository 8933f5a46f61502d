// Gives every object of a class a mutex of its own.

#pragma once

#include <mutex>

namespace dp {

/// `T` only tells the bases of different hierarchies apart.
template <class T>
class ObjectLevelLockable {
public:
    void Lock() const { m_mutex.lock(); }
    void Unlock() const { m_mutex.unlock(); }

protected:
    ObjectLevelLockable() = default;
    ~ObjectLevelLockable() = default;

private:
    mutable std::mutex m_mutex;
};

}  // namespace dp
