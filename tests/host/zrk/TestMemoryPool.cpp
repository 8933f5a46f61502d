#include "zrk/object/MemoryPool.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <vector>

#include "zrk/object/MemoryPoolAllocated.h"

namespace zrk {
namespace {

/// Sizes that no other object of the process has, so that nobody takes our blocks.
constexpr std::size_t kOddSize = 12344;
constexpr std::size_t kOtherSize = 15000;

// Sets ordered by address come out in the order of creation only if addresses ascend over all sizes.
TEST(MemoryPool, HandsOutAscendingAddressesOverAllSizes) {
    std::vector<std::pair<void*, std::size_t>> blocks;
    for (std::size_t i = 0; i < 60; ++i) {
        const std::size_t size = 20000 + i * 7919 % 3000;
        blocks.emplace_back(MemoryPool::Allocate(size), size);
        std::memset(blocks.back().first, 0xAB, size);
    }
    for (std::size_t i = 1; i < blocks.size(); ++i) {
        const auto end = static_cast<char*>(blocks[i - 1].first) + blocks[i - 1].second;
        EXPECT_LE(end, static_cast<char*>(blocks[i].first));
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(blocks[i].first) % 16, 0U);
    }
    for (const auto& [block, size] : blocks) MemoryPool::Free(block, size);
}

TEST(MemoryPool, UsesFreedBlocksAgainLowestFirstAndForTheirSizeOnly) {
    std::vector<void*> blocks;
    for (int i = 0; i < 4; ++i) blocks.push_back(MemoryPool::Allocate(kOddSize));
    for (const int i : {2, 0, 3}) MemoryPool::Free(blocks[static_cast<std::size_t>(i)], kOddSize);
    void* const other = MemoryPool::Allocate(kOtherSize);
    EXPECT_GT(other, blocks[3]);
    for (const std::size_t i : {0U, 2U, 3U})
        EXPECT_EQ(MemoryPool::Allocate(kOddSize - i), blocks[i]);  // rounded up
    void* const fresh = MemoryPool::Allocate(kOddSize);
    EXPECT_GT(fresh, other);
    MemoryPool::Free(nullptr, kOddSize);
    for (void* block : blocks) MemoryPool::Free(block, kOddSize);
    MemoryPool::Free(fresh, kOddSize);
    MemoryPool::Free(other, kOtherSize);
}

TEST(MemoryPool, FailsExactlyTheRequestedAllocationOnceAndSoDoesNew) {
    struct Pooled : MemoryPoolAllocated {
        explicit Pooled(int& made) { ++made; }
        char bytes[kOddSize];
    };
    int made = 0;
    MemoryPool::FailNext(2);
    const auto* const first = new Pooled(made);
    const auto* const second = new Pooled(made);
    const auto* const third = new Pooled(made);
    EXPECT_NE(first, nullptr);
    EXPECT_EQ(second, nullptr);
    EXPECT_NE(third, nullptr);
    EXPECT_EQ(made, 2);
    MemoryPool::FailNext(1);
    MemoryPool::FailNext(0);
    void* const block = MemoryPool::Allocate(kOddSize);
    EXPECT_NE(block, nullptr);
    MemoryPool::Free(block, kOddSize);
    delete first;
    delete third;
}

// What takes changes back goes on when the pool is exhausted; what it took from elsewhere goes back there.
TEST(MemoryPool, HelpsOutFromElsewhereWhereNothingMayBeMissing) {
    MemoryPool::FailNext(1);
    void* const anywhere = MemoryPool::AllocateAnywhere(kOddSize);
    EXPECT_FALSE(MemoryPool::FailNext(0)) << "it counts as an allocation";
    ASSERT_NE(anywhere, nullptr);
    const std::size_t inUse = MemoryPool::GetBytesInUse();
    std::memset(anywhere, 0xAB, kOddSize);
    MemoryPool::Free(anywhere, kOddSize);
    EXPECT_EQ(MemoryPool::GetBytesInUse(), inUse) << "it was not the pool's";
}

}  // namespace
}  // namespace zrk
