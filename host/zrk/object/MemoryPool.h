// The memory of the kernel's objects: one reserved range of addresses, handed out upwards. On a fresh run the
// order of addresses is therefore the order of creation, and sets ordered by address come out the same every
// time.

#pragma once

#include <cstddef>
#include <cstdint>

namespace zrk {

/// Blocks that were freed are used again for the same size, lowest address first. Any thread. Never
/// destroyed: objects in static storage are freed late.
class MemoryPool {
public:
    /// Null when the range is exhausted or a failure was asked for.
    static void* Allocate(std::size_t size) noexcept;
    /// The same, but takes memory from elsewhere when there is none in the range: for what takes changes
    /// back, and so must not be missing. Null when there is none anywhere.
    static void* AllocateAnywhere(std::size_t size) noexcept;
    /// Of either.
    static void Free(void* block, std::size_t size) noexcept;

    /// What is handed out now and not freed, in bytes.
    static std::size_t GetBytesInUse() noexcept;

    /// For tests: the n-th allocation from now (1 is the next) fails; 0 takes the request back. Whether an
    /// earlier request was still waiting for its allocation.
    static bool FailNext(std::uint64_t n) noexcept;
};

}  // namespace zrk
