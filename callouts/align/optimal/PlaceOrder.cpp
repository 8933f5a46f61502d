#include "callouts/align/optimal/PlaceOrder.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <numeric>

namespace zrcallouts {
namespace {

constexpr std::size_t kFew = 512;  // up to here comparing is faster than counting
constexpr unsigned kDigitBits = 11;
constexpr unsigned kDigits = 3;
constexpr std::size_t kBuckets = std::size_t{1} << kDigitBits;

/// In the order of the numbers, which it knows to 24 bits; the index in the lower half.
std::uint64_t KeyOf(double value, std::size_t index) {
    constexpr std::uint32_t kSign = 0x80000000U;
    const auto bits = std::bit_cast<std::uint32_t>(static_cast<float>(value) + 0.0F);  // no -0
    const std::uint32_t ordered = (bits & kSign) != 0 ? ~bits : bits | kSign;
    return std::uint64_t{ordered} << 32U | index;
}

std::size_t DigitOf(std::uint64_t key, unsigned digit) {
    return static_cast<std::size_t>(key >> (32U + digit * kDigitBits)) & (kBuckets - 1);
}

}  // namespace

std::span<const std::uint32_t> PlaceOrder::Sort(std::span<const double> values) {
    m_order.resize(values.size());
    const auto isBefore = [values](std::uint32_t a, std::uint32_t b) {
        return values[a] < values[b] || (values[a] == values[b] && a < b);
    };
    if (values.size() <= kFew) {
        std::iota(m_order.begin(), m_order.end(), 0U);
        std::sort(m_order.begin(), m_order.end(), isBefore);
        return m_order;
    }
    SortByDigits(values);
    // Numbers that share their 24 bits lie together by now; often there are none.
    for (std::size_t first = 0; first < m_order.size();) {
        std::size_t end = first + 1;
        while (end < m_order.size() && m_keys[end] >> 32U == m_keys[first] >> 32U) ++end;
        const auto at = [&](std::size_t i) { return m_order.begin() + static_cast<std::ptrdiff_t>(i); };
        if (end - first > 1) std::sort(at(first), at(end), isBefore);
        first = end;
    }
    return m_order;
}

/// A radix sort from the lowest digit on.
void PlaceOrder::SortByDigits(std::span<const double> values) {
    m_keys.resize(values.size());
    m_spare.resize(values.size());
    std::array<std::array<std::uint32_t, kBuckets>, kDigits> starts{};
    for (std::size_t i = 0; i < values.size(); ++i) {
        m_keys[i] = KeyOf(values[i], i);
        for (unsigned digit = 0; digit < kDigits; ++digit) ++starts[digit][DigitOf(m_keys[i], digit)];
    }
    for (unsigned digit = 0; digit < kDigits; ++digit) {
        std::exclusive_scan(starts[digit].begin(), starts[digit].end(), starts[digit].begin(), 0U);
        for (const std::uint64_t key : m_keys) m_spare[starts[digit][DigitOf(key, digit)]++] = key;
        m_keys.swap(m_spare);
    }
    std::transform(m_keys.begin(), m_keys.end(), m_order.begin(),
                   [](std::uint64_t key) { return static_cast<std::uint32_t>(key); });
}

}  // namespace zrcallouts
