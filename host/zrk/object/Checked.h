// For what cannot go on without the object that it makes.

#pragma once

#include <new>

namespace zrk {

/// `Checked(new X)`: throws std::bad_alloc where the pool is exhausted and the new-expression gives null.
template <class T>
[[nodiscard]] T* Checked(T* made) {
    if (made == nullptr) throw std::bad_alloc();
    return made;
}

}  // namespace zrk
