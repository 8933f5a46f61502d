#include "callouts/align/optimal/PlaceOrder.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <numeric>

namespace zrcallouts {
namespace {

constexpr std::size_t kFew = 512;  // up to here comparing is faster than counting
constexpr unsigned kDigitBits = 12;
constexpr unsigned kDigits = 2;
constexpr unsigned kUnsorted = 64 - kDigits * kDigitBits;  // bits of a key below its digits
constexpr std::size_t kBuckets = std::size_t{1} << kDigitBits;
constexpr double kGreatest = std::numeric_limits<std::uint32_t>::max();

std::size_t DigitOf(std::uint64_t key, unsigned digit) {
    return static_cast<std::size_t>(key >> (kUnsorted + digit * kDigitBits)) & (kBuckets - 1);
}

}  // namespace

std::span<const std::uint32_t> PlaceOrder::Sort(std::span<const double> values) {
    m_order.resize(values.size());
    if (values.size() > kFew) {
        SortByDigits(values);
        return m_order;
    }
    std::iota(m_order.begin(), m_order.end(), 0U);
    std::sort(m_order.begin(), m_order.end(), [values](std::uint32_t a, std::uint32_t b) {
        return values[a] < values[b] || (values[a] == values[b] && a < b);
    });
    return m_order;
}

/// Where each number lies between the least and the greatest one, as 32 bits; the index in the lower half.
void PlaceOrder::FindKeys(std::span<const double> values) {
    double least = values.front();
    double greatest = least;
    for (const double value : values) {
        least = std::min(least, value);
        greatest = std::max(greatest, value);
    }
    // Halves, since the whole range of doubles is no double.
    const double scale =
        std::min(kGreatest / (0.5 * greatest - 0.5 * least), std::numeric_limits<double>::max());
    m_keys.resize(values.size());
    for (std::size_t i = 0; i < values.size(); ++i)
        m_keys[i] = static_cast<std::uint64_t>((0.5 * values[i] - 0.5 * least) * scale) << 32U | i;
}

/// A radix sort of the upper bits, from the lower digit on.
void PlaceOrder::SortByDigits(std::span<const double> values) {
    FindKeys(values);
    m_spare.resize(values.size());
    std::array<std::array<std::uint32_t, kBuckets>, kDigits> starts{};
    for (const std::uint64_t key : m_keys) {
        for (unsigned digit = 0; digit < kDigits; ++digit) ++starts[digit][DigitOf(key, digit)];
    }
    for (unsigned digit = 0; digit < kDigits; ++digit) {
        std::exclusive_scan(starts[digit].begin(), starts[digit].end(), starts[digit].begin(), 0U);
        for (const std::uint64_t key : m_keys) m_spare[starts[digit][DigitOf(key, digit)]++] = key;
        m_keys.swap(m_spare);
    }
    SortAlikes(values);
    std::transform(m_keys.begin(), m_keys.end(), m_order.begin(),
                   [](std::uint64_t key) { return static_cast<std::uint32_t>(key); });
}

/// Numbers that share their digits lie together by now. There are few, unless most are near each other and
/// some far off.
void PlaceOrder::SortAlikes(std::span<const double> values) {
    const auto isBefore = [values](std::uint64_t a, std::uint64_t b) {
        if (a >> 32U != b >> 32U) return a < b;
        const double valueA = values[static_cast<std::uint32_t>(a)];
        const double valueB = values[static_cast<std::uint32_t>(b)];
        return valueA < valueB || (valueA == valueB && a < b);
    };
    const auto at = [&](std::size_t i) { return m_keys.begin() + static_cast<std::ptrdiff_t>(i); };
    for (std::size_t first = 0; first < m_keys.size();) {
        std::size_t end = first + 1;
        while (end < m_keys.size() && m_keys[end] >> kUnsorted == m_keys[first] >> kUnsorted) ++end;
        if (end - first > 1) std::sort(at(first), at(end), isBefore);
        first = end;
    }
}

}  // namespace zrcallouts
