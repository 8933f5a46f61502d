#include "zrk/object/MemoryPool.h"

#include <sys/mman.h>

#include <cstdlib>
#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <utility>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/asan_interface.h>
#else
#define ASAN_POISON_MEMORY_REGION(address, size) (static_cast<void>(address), static_cast<void>(size))
#define ASAN_UNPOISON_MEMORY_REGION(address, size) (static_cast<void>(address), static_cast<void>(size))
#endif

namespace zrk {
namespace {

constexpr std::size_t kRange = std::size_t{64} << 30;  // reserved addresses; memory is taken as it is used
constexpr std::size_t kAlignment = 16;

std::size_t RoundUp(std::size_t size) { return (size + kAlignment - 1) / kAlignment * kAlignment; }

class Pool {
public:
    Pool() {
        void* range =
            mmap(nullptr, kRange, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
        if (range == MAP_FAILED) return;
        m_begin = static_cast<std::byte*>(range);
        m_next = m_begin;
        m_end = m_begin + kRange;
    }

    void* Allocate(std::size_t size) {
        const std::lock_guard hold(m_mutex);
        if (m_failIn > 0 && --m_failIn == 0) return nullptr;
        void* block = TakeFreed(size);
        if (block == nullptr) block = TakeFresh(size);
        if (block == nullptr) return nullptr;
        ASAN_UNPOISON_MEMORY_REGION(block, size);
        m_inUse += size;
        return block;
    }

    /// The range never moves.
    bool IsOurs(const void* block) const {
        return std::less_equal<const void*>()(m_begin, block) && std::less<const void*>()(block, m_end);
    }

    void Free(void* block, std::size_t size) {
        const std::lock_guard hold(m_mutex);
        ASAN_POISON_MEMORY_REGION(block, size);
        m_freed[size].insert(block);
        m_inUse -= size;
    }

    std::size_t GetBytesInUse() {
        const std::lock_guard hold(m_mutex);
        return m_inUse;
    }

    bool FailNext(std::uint64_t n) {
        const std::lock_guard hold(m_mutex);
        return std::exchange(m_failIn, n) > 0;
    }

private:
    void* TakeFreed(std::size_t size) {
        const auto blocks = m_freed.find(size);
        if (blocks == m_freed.end() || blocks->second.empty()) return nullptr;
        return blocks->second.extract(blocks->second.begin()).value();
    }

    void* TakeFresh(std::size_t size) {
        if (static_cast<std::size_t>(m_end - m_next) < size) return nullptr;
        void* block = m_next;
        m_next += size;
        return block;
    }

    std::byte* m_begin = nullptr;
    std::byte* m_end = nullptr;
    std::mutex m_mutex;  // guards all below
    std::byte* m_next = nullptr;
    std::map<std::size_t, std::set<void*>> m_freed;
    std::size_t m_inUse = 0;
    std::uint64_t m_failIn = 0;
};

Pool& ThePool() {
    static auto* const pool = new Pool();
    return *pool;
}

}  // namespace

void* MemoryPool::Allocate(std::size_t size) noexcept { return ThePool().Allocate(RoundUp(size)); }

void* MemoryPool::AllocateAnywhere(std::size_t size) noexcept {
    void* block = ThePool().Allocate(RoundUp(size));
    return block != nullptr ? block : std::malloc(size);
}

void MemoryPool::Free(void* block, std::size_t size) noexcept {
    if (block == nullptr) return;
    if (ThePool().IsOurs(block)) {
        ThePool().Free(block, RoundUp(size));
    } else {
        std::free(block);
    }
}

std::size_t MemoryPool::GetBytesInUse() noexcept { return ThePool().GetBytesInUse(); }

bool MemoryPool::FailNext(std::uint64_t n) noexcept { return ThePool().FailNext(n); }

}  // namespace zrk
