// Base of classes whose objects lie in the kernel's memory pool.

#pragma once

#include <cstddef>

#include "zrk/object/MemoryPool.h"

namespace zrk {

class MemoryPoolAllocated {
public:
    /// Null when the pool is exhausted; the new-expression then gives null and constructs nothing.
    static void* operator new(std::size_t size) noexcept { return MemoryPool::Allocate(size); }
    static void* operator new(std::size_t, void* place) noexcept { return place; }
    static void operator delete(void* block, std::size_t size) noexcept { MemoryPool::Free(block, size); }
    static void operator delete(void*, void*) noexcept {}

protected:
    MemoryPoolAllocated() = default;
    MemoryPoolAllocated(const MemoryPoolAllocated&) = default;
    MemoryPoolAllocated& operator=(const MemoryPoolAllocated&) = default;
    ~MemoryPoolAllocated() = default;
};

}  // namespace zrk
