#include "dp/ReadWriteLock.h"

#include "du/Assert.h"

namespace dp {
namespace {

const std::thread::id kNobody;

}  // namespace

void ReadWriteLock::ReadLock() {
    const auto me = std::this_thread::get_id();
    std::unique_lock hold(m_mutex);
    const auto mine = m_readDepths.find(me);
    if (mine != m_readDepths.end()) {
        ++mine->second;
        return;
    }
    if (m_owner != me) {
        ++m_waiters;
        m_changed.wait(
            hold, [this] { return m_owner == kNobody && m_waitingUpgraders == 0 && m_waitingWriters == 0; });
        --m_waiters;
        ++m_activeReaders;
    }
    m_readDepths.emplace(me, 1U);
}

void ReadWriteLock::ReadUnlock() noexcept {
    const auto me = std::this_thread::get_id();
    const std::lock_guard hold(m_mutex);
    const auto mine = m_readDepths.find(me);
    DU_ASSERT(mine != m_readDepths.end(), "A thread gave back a read lock that it does not hold.");
    if (--mine->second > 0) return;
    m_readDepths.erase(mine);
    if (m_owner == me) return;
    --m_activeReaders;
    Wake();
}

void ReadWriteLock::WriteLock() {
    const auto me = std::this_thread::get_id();
    std::unique_lock hold(m_mutex);
    if (m_owner == me) {
        ++m_writeDepth;
        return;
    }
    if (m_readDepths.contains(me)) {
        WaitAsUpgrader(hold);
    } else {
        WaitAsWriter(hold);
    }
    m_owner = me;
    m_writeDepth = 1;
}

void ReadWriteLock::WaitAsUpgrader(std::unique_lock<std::mutex>& hold) {
    --m_activeReaders;
    ++m_waitingUpgraders;
    Wake();
    ++m_waiters;
    m_changed.wait(hold, [this] { return m_owner == kNobody && m_activeReaders == 0; });
    --m_waiters;
    --m_waitingUpgraders;
}

void ReadWriteLock::WaitAsWriter(std::unique_lock<std::mutex>& hold) {
    ++m_waitingWriters;
    ++m_waiters;
    m_changed.wait(hold,
                   [this] { return m_owner == kNobody && m_activeReaders == 0 && m_waitingUpgraders == 0; });
    --m_waiters;
    --m_waitingWriters;
}

void ReadWriteLock::WriteUnlock() noexcept {
    const auto me = std::this_thread::get_id();
    const std::lock_guard hold(m_mutex);
    DU_ASSERT(m_owner == me, "A thread gave back a write lock that it does not hold.");
    if (--m_writeDepth > 0) return;
    m_owner = kNobody;
    if (m_readDepths.contains(me)) ++m_activeReaders;
    Wake();
}

void ReadWriteLock::Wake() noexcept {
    if (m_waiters > 0) m_changed.notify_all();
}

}  // namespace dp
