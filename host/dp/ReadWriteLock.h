// A reader-writer lock that a thread may take again while it holds it, in any mix: read under read, write
// under write, read under write, and write under read (an upgrade), by several threads at once.
//
// An upgrading reader steps back ("suspends") until the other active readers are done or have suspended too,
// so any number of upgraders finish one after the other. The price: another upgrader may have written in
// between. Code that upgrades must therefore not rely on what it read before; walks go over copies.

#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <thread>
#include <unordered_map>

namespace dp {

/// Fresh readers queue behind waiting writers; a thread that holds the lock already never waits for them.
/// Upgraders go before fresh writers. Unlocking what one does not hold ends the process.
class ReadWriteLock {
public:
    ReadWriteLock() = default;
    ReadWriteLock(const ReadWriteLock&) = delete;
    ReadWriteLock& operator=(const ReadWriteLock&) = delete;

    void ReadLock();
    void ReadUnlock() noexcept;
    void WriteLock();
    /// Read holds that the thread also has stay, without a gap.
    void WriteUnlock() noexcept;

private:
    void WaitAsUpgrader(std::unique_lock<std::mutex>& hold);
    void WaitAsWriter(std::unique_lock<std::mutex>& hold);
    void Wake() noexcept;

    std::mutex m_mutex;  // guards all below; held for bookkeeping only
    std::condition_variable m_changed;
    std::unordered_map<std::thread::id, unsigned> m_readDepths;
    std::thread::id m_owner;
    unsigned m_writeDepth = 0;
    std::size_t m_activeReaders = 0;  // neither suspended nor the owner
    std::size_t m_waitingUpgraders = 0;
    std::size_t m_waitingWriters = 0;
    std::size_t m_waiters = 0;
};

}  // namespace dp
