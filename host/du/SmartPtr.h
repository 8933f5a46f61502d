// Holds a counted object. The pointer itself is not shared between threads; the object it holds may be.

#pragma once

#include <cstddef>
#include <functional>
#include <type_traits>
#include <utility>

namespace du {

template <class T>
class SmartPtr {
public:
    SmartPtr() = default;
    SmartPtr(std::nullptr_t) {}
    SmartPtr(T* object) : m_object(object) { Take(); }
    SmartPtr(const SmartPtr& other) : m_object(other.m_object) { Take(); }
    SmartPtr(SmartPtr&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    template <class U>
    requires std::is_convertible_v<U*, T*> SmartPtr(const SmartPtr<U>& other) : m_object(other.get()) {
        Take();
    }
    template <class U>
    requires std::is_convertible_v<U*, T*> SmartPtr(SmartPtr<U>&& other)
    noexcept : m_object(other.Detach()) {}
    ~SmartPtr() { Release(m_object); }

    /// Holds the object by a reference that was added to it before.
    static SmartPtr Adopt(T* object) {
        SmartPtr pointer;
        pointer.m_object = object;
        return pointer;
    }
    /// Hands the reference to the caller.
    [[nodiscard]] T* Detach() noexcept { return std::exchange(m_object, nullptr); }

    /// The new object is taken before the old one is released; assigning the same object does nothing.
    SmartPtr& operator=(const SmartPtr& other) {
        Assign(other.m_object);
        return *this;
    }
    SmartPtr& operator=(SmartPtr&& other) noexcept {
        if (this != &other) Release(std::exchange(m_object, std::exchange(other.m_object, nullptr)));
        return *this;
    }

    T* get() const { return m_object; }
    T* operator->() const { return m_object; }
    T& operator*() const { return *m_object; }
    explicit operator bool() const { return m_object != nullptr; }

    friend bool operator==(const SmartPtr& a, const SmartPtr& b) { return a.m_object == b.m_object; }
    /// By object address: sets and maps keyed by smart pointers are ordered so.
    friend bool operator<(const SmartPtr& a, const SmartPtr& b) {
        return std::less<const void*>()(a.m_object, b.m_object);
    }

private:
    void Take() {
        if (m_object != nullptr) m_object->AddReference(this);
    }
    void Assign(T* object) {
        if (object == m_object) return;
        if (object != nullptr) object->AddReference(this);
        Release(std::exchange(m_object, object));
    }
    void Release(T* object) {
        if (object == nullptr || !object->RemoveReference(this)) return;
        auto* counted = const_cast<std::remove_const_t<T>*>(object);
        if (counted->ZeroReferenceCountHook()) delete counted;
    }

    T* m_object = nullptr;
};

template <class U, class T>
SmartPtr<U> DynamicCast(const SmartPtr<T>& pointer) {
    return SmartPtr<U>(dynamic_cast<U*>(pointer.get()));
}

/// The pointer is emptied where the object is a U, so that no reference is counted.
template <class U, class T>
SmartPtr<U> DynamicCast(SmartPtr<T>&& pointer) {
    auto* object = dynamic_cast<U*>(pointer.get());
    if (object != nullptr) static_cast<void>(pointer.Detach());
    return SmartPtr<U>::Adopt(object);
}

/// No test is made. Requires: the object is a U, and T is no virtual base of U.
template <class U, class T>
SmartPtr<U> StaticCast(const SmartPtr<T>& pointer) {
    return SmartPtr<U>(static_cast<U*>(pointer.get()));
}

}  // namespace du

template <class T>
struct std::hash<du::SmartPtr<T>> {
    std::size_t operator()(const du::SmartPtr<T>& pointer) const noexcept {
        return std::hash<const void*>()(pointer.get());
    }
};
