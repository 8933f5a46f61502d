// The engine and all that it is told of: the bytes choose what a user does to a scene, and how far undo and
// redo go.

#include <gtest/gtest.h>

#include <span>

#include "tests/callouts/SceneWalk.h"
#include "tests/fuzz/FuzzTarget.h"

namespace zrcallouts {
namespace {

/// The next number of an input, spread so that choices among many reach all of them; 0 behind its end.
class Numbers {
public:
    explicit Numbers(std::span<const std::uint8_t> bytes) : m_bytes(bytes) {}

    bool IsEmpty() const { return m_bytes.empty(); }
    unsigned Next() {
        constexpr unsigned kSpread = 7919;  // prime, so that every remainder comes up
        if (m_bytes.empty()) return 0;
        const unsigned number = m_bytes.front() * kSpread;
        m_bytes = m_bytes.subspan(1);
        return number;
    }

private:
    std::span<const std::uint8_t> m_bytes;
};

class FuzzedWalk : public SceneWalk {
public:
    explicit FuzzedWalk(Numbers& numbers)
        : SceneWalk([&numbers] { return numbers.Next(); }), m_numbers(numbers) {}
    void TestBody() override {
        Walk([this] { return !m_numbers.IsEmpty(); });
    }

private:
    Numbers& m_numbers;
};

}  // namespace
}  // namespace zrcallouts

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    zrcallouts::Numbers numbers({data, size});
    zrcallouts::FuzzedWalk(numbers).TestBody();
    return 0;
}
