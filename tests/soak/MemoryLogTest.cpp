#include "tests/soak/MemoryLog.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "zrk/object/MemoryPool.h"

namespace zrcallouts {
namespace {

using Sample = MemoryLog::Sample;
using testing::HasSubstr;

/// A thousand edits a sample; the heap is what `heapBytes` gives after so many samples.
template <class Bytes>
std::string VerdictOn(std::size_t samples, std::size_t Sample::*member, const Bytes& bytes) {
    MemoryLog log;
    for (std::size_t i = 0; i < samples; ++i) {
        Sample sample{1000 * i, 5000000, 3000000, 90000000};
        sample.*member += bytes(i);
        log.Add(sample);
    }
    return log.Verdict();
}

// Caches fill and single samples stand out while nothing grows; 20 bytes an edit are a leak.
TEST(MemoryLog, TellsGrowthFromWarmingUp) {
    const auto leak = [](std::size_t i) { return 20 * 1000 * i; };
    EXPECT_THAT(VerdictOn(40, &Sample::heapBytes, leak), HasSubstr("heap grows: from 5500000 to 5700000"));
    EXPECT_THAT(VerdictOn(40, &Sample::poolBytes, leak), HasSubstr("pool grows"));
    EXPECT_THAT(VerdictOn(4000, &Sample::residentBytes, leak), HasSubstr("resident memory grows"));
    EXPECT_EQ(
        VerdictOn(40, &Sample::heapBytes, [](auto i) { return std::min<std::size_t>(i, 15) * 1000000; }), "");
    EXPECT_EQ(VerdictOn(40, &Sample::poolBytes, [](auto i) { return i % 3 == 0 ? 400000 : 0; }), "");
    EXPECT_EQ(VerdictOn(40, &Sample::heapBytes, [](auto i) { return 1000 * (i % 20); }), "");
}

TEST(MemoryLog, DoesNotJudgeFromTooLittle) {
    EXPECT_THAT(VerdictOn(11, &Sample::heapBytes, [](auto) { return 0; }), HasSubstr("too few samples"));
}

// What the verdict reads is what the process has: a block of each kind shows.
TEST(MemoryLog, SeesHeapAndPool) {
    const auto before = MemoryLog::Take(0);
    constexpr std::size_t kBlock = std::size_t{3} << 20;
    const std::vector<char> onHeap(kBlock, 'x');
    void* inPool = zrk::MemoryPool::Allocate(kBlock);
    const auto during = MemoryLog::Take(1);
    zrk::MemoryPool::Free(inPool, kBlock);
    EXPECT_GE(during.heapBytes, before.heapBytes + kBlock);
    EXPECT_EQ(during.poolBytes, before.poolBytes + kBlock);
    EXPECT_GT(during.residentBytes, before.residentBytes);
    EXPECT_EQ(MemoryLog::Take(2).poolBytes, before.poolBytes);
}

}  // namespace
}  // namespace zrcallouts
