// Puts numbers in order, many at once.

#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "callouts/ZrcalloutsExport.h"

namespace zrcallouts {

/// Keeps its memory from call to call. One thread at a time.
class ZRCALLOUTS_API PlaceOrder {
public:
    /// The numbers' indices from the least to the greatest, equal ones as they come. Valid until the next
    /// call. Requires: fewer than 2^32, all finite. O(n), unless most are near each other and some far off:
    /// then O(n log n).
    std::span<const std::uint32_t> Sort(std::span<const double> values);

private:
    void FindKeys(std::span<const double> values);
    void SortByDigits(std::span<const double> values);
    void SortAlikes(std::span<const double> values);

    std::vector<std::uint64_t> m_keys;
    std::vector<std::uint64_t> m_spare;
    std::vector<std::uint32_t> m_order;
};

}  // namespace zrcallouts
