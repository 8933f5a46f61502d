// The base of everything that is shared: an intrusive count of the references to an object.

#pragma once

#include <atomic>

namespace du {

/// Counts start at 0: an object belongs to nobody until the first SmartPtr takes it. Mostly a virtual base.
/// Any thread.
class RefCounted {
public:
    RefCounted() = default;
    /// A copy is a new object: it starts with a count of its own.
    RefCounted(const RefCounted&) {}
    RefCounted& operator=(const RefCounted&) { return *this; }
    virtual ~RefCounted();

    /// `owner` tags the holder (the address of its slot) and is not dereferenced.
    void AddReference(const void* /*owner*/) const { m_count.fetch_add(1, std::memory_order_relaxed); }
    /// Like AddReference, but fails for an object whose count is 0: one that nobody holds or that is being
    /// freed.
    bool TryAddReference(const void* owner) const;
    /// True when this was the last reference; the caller then asks ZeroReferenceCountHook.
    bool RemoveReference(const void* /*owner*/) const {
        return m_count.fetch_sub(1, std::memory_order_acq_rel) == 1;
    }
    /// Asked when the count has fallen to 0: true lets the holder delete the object, false keeps it.
    virtual bool ZeroReferenceCountHook() { return true; }
    /// For tests and diagnostics; the answer may be old by the time it is read.
    unsigned GetReferenceCount() const { return m_count.load(std::memory_order_relaxed); }

private:
    mutable std::atomic<unsigned> m_count{0};
};

}  // namespace du
