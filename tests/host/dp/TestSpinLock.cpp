#include "dp/SpinLock.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "dp/AtomicOps.h"

namespace dp {
namespace {

TEST(SpinLock, KeepsThreadsApart) {
    constexpr int kThreads = 4;
    constexpr int kRounds = 5000;
    SpinLock lock;
    int value = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < kRounds; ++round) {
                lock.Lock();
                const int before = value;
                if (round % 64 == 0) std::this_thread::yield();
                value = before + 1;
                lock.Unlock();
            }
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(value, kThreads * kRounds);
}

TEST(SpinLockDeathTest, EndsTheProcessInsteadOfSpinningForever) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    SpinLock lock;
    lock.Lock();
    EXPECT_DEATH(lock.Lock(), "spin lock that it holds");
    lock.Unlock();
    lock.Lock();  // given back, it can be taken again
    lock.Unlock();
}

TEST(AtomicOps, CountsPlainFieldsFromManyThreads) {
    constexpr int kThreads = 4;
    constexpr int kRounds = 5000;
    int value = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&value] {
            for (int round = 0; round < kRounds; ++round) {
                AtomicOps::Increment(value);
                AtomicOps::Increment(value);
                AtomicOps::Decrement(value);
            }
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(AtomicOps::Increment(value), kThreads * kRounds + 1);
    EXPECT_EQ(AtomicOps::Decrement(value), kThreads * kRounds);
}

}  // namespace
}  // namespace dp
