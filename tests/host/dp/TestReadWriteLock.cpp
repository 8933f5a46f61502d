#include "dp/ReadWriteLock.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <latch>
#include <random>
#include <string>
#include <thread>

#include "dp/ReadLocker.h"
#include "dp/WriteLocker.h"
#include "tests/support/Deadline.h"
#include "tests/support/OnThreads.h"

namespace dp {
namespace {

using std::chrono::milliseconds;

/// Long enough for a thread that is let in wrongly to be seen, short enough for a test.
constexpr milliseconds kPatience{30};

/// Does 'r'/'R' (read lock/unlock) and 'w'/'W' (write lock/unlock) on the calling thread.
void Play(ReadWriteLock& lock, const std::string& moves) {
    for (const char move : moves) {
        if (move == 'r') lock.ReadLock();
        if (move == 'R') lock.ReadUnlock();
        if (move == 'w') lock.WriteLock();
        if (move == 'W') lock.WriteUnlock();
    }
}

/// Another thread that wants the lock once.
class Rival {
public:
    Rival(ReadWriteLock& lock, const std::string& lockMove, const std::string& unlockMove)
        : m_thread([this, &lock, lockMove, unlockMove] {
              Play(lock, lockMove);
              m_isIn = true;
              Play(lock, unlockMove);
          }) {}
    ~Rival() { m_thread.join(); }
    bool GetsInSoon() const {
        std::this_thread::sleep_for(kPatience);
        return m_isIn;
    }
    void WaitUntilIn() const {
        while (!m_isIn) std::this_thread::yield();
    }

private:
    std::atomic<bool> m_isIn{false};
    std::thread m_thread;
};

// Who else gets in after a thread made these moves? Each row is a way to count holds wrongly.
TEST(ReadWriteLock, LetsOthersInExactlyByWhatIsStillHeld) {
    const struct {
        const char* moves;
        bool readerGetsIn;
        bool writerGetsIn;
        const char* rest;  // gives back what is left
    } rows[] = {
        {"r", true, false, "R"},     {"w", false, false, "W"},    {"rrR", true, false, "R"},
        {"wwW", false, false, "W"},  {"wrR", false, false, "W"},  {"wrW", true, false, "R"},
        {"rwW", true, false, "R"},   {"rwR", false, false, "W"},  {"rwwW", false, false, "WR"},
        {"rrwWR", true, false, "R"}, {"wrrWR", true, false, "R"}, {"rwrWR", true, false, "R"},
        {"rRwW", true, true, ""},    {"rwrRWR", true, true, ""},  {"wrwWRW", true, true, ""},
        {"rwWwWR", true, true, ""},  {"wrWwWR", true, true, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.moves);
        ReadWriteLock lock;
        Play(lock, row.moves);
        {
            const Rival reader(lock, "r", "R");
            EXPECT_EQ(reader.GetsInSoon(), row.readerGetsIn);
            if (row.readerGetsIn) reader.WaitUntilIn();
            if (!row.readerGetsIn) Play(lock, row.rest);
        }
        if (!row.readerGetsIn) Play(lock, row.moves);
        const Rival writer(lock, "w", "W");
        EXPECT_EQ(writer.GetsInSoon(), row.writerGetsIn);
        Play(lock, row.rest);
    }
}

TEST(ReadWriteLock, LetsAHolderReenterAndUpgradeWhileAWriterWaits) {
    const zrtest::Deadline deadline(std::chrono::seconds(60));
    ReadWriteLock lock;
    lock.ReadLock();
    const Rival writer(lock, "w", "W");
    EXPECT_FALSE(writer.GetsInSoon());
    {
        const Rival freshReader(lock, "r", "R");  // queues behind the writer, else readers could starve it
        EXPECT_FALSE(freshReader.GetsInSoon());
        Play(lock, "rRwW");
        EXPECT_FALSE(freshReader.GetsInSoon());
        EXPECT_FALSE(writer.GetsInSoon());
        lock.ReadUnlock();
    }
}

// The upgrader still holds what it read before; a fresh writer in between would change it more than need be.
TEST(ReadWriteLock, LetsAnUpgraderGoBeforeAWriterWhoCameFirst) {
    for (int round = 0; round < 20; ++round) {
        ReadWriteLock lock;
        std::atomic<int> turn{0};
        std::latch upgraderReads(1);
        std::latch writerWaits(1);
        lock.ReadLock();
        std::thread upgrader([&] {
            const ReadLocker read(&lock);
            upgraderReads.count_down();
            writerWaits.wait();
            const WriteLocker write(&lock);
            EXPECT_EQ(++turn, 1);
        });
        upgraderReads.wait();
        std::thread writer([&] {
            const WriteLocker write(&lock);
            EXPECT_EQ(++turn, 2);
        });
        std::this_thread::sleep_for(milliseconds(2));
        writerWaits.count_down();
        std::this_thread::sleep_for(milliseconds(2));
        lock.ReadUnlock();
        upgrader.join();
        writer.join();
    }
}

// When several that read ask to write at the same time, none could unless the others were suspended.
TEST(ReadWriteLock, KeepsRandomMixesOfHoldsApart) {
    const zrtest::Deadline deadline(std::chrono::seconds(60));
    constexpr int kThreads = 4;
    constexpr int kRounds = 400;  // each gives way to other threads a few times
    const char* const kMoves[] = {"r", "w", "rr", "rw", "wr", "rwr", "wrw"};
    ReadWriteLock lock;
    int left = 0;
    int right = 0;  // always equal to `left` when nobody writes
    std::atomic<int> torn{0};
    zrtest::OnThreads(kThreads, [&](std::size_t seed) {
        std::mt19937 random(static_cast<unsigned>(seed));
        for (int round = 0; round < kRounds; ++round) {
            const std::string moves = kMoves[random() % std::size(kMoves)];
            Play(lock, moves);
            for (int look = 0; look < 4; ++look) {
                torn += left == right ? 0 : 1;
                std::this_thread::yield();
            }
            if (moves.find('w') != std::string::npos) {
                ++left;
                std::this_thread::yield();
                ++right;
            }
            for (auto move = moves.rbegin(); move != moves.rend(); ++move) {
                Play(lock, *move == 'r' ? "R" : "W");
            }
        }
    });
    EXPECT_EQ(torn, 0);
    EXPECT_EQ(left, right);
}

TEST(ReadWriteLockDeathTest, EndsTheProcessWhenSomeoneGivesBackWhatHeDoesNotHold) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    for (const char* moves : {"R", "W", "rRR", "rW", "wWW", "wR"}) {
        ReadWriteLock lock;
        EXPECT_DEATH(Play(lock, moves), "does not hold") << moves;
    }
}

}  // namespace
}  // namespace dp
