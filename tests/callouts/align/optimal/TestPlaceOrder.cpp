#include "callouts/align/optimal/PlaceOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <vector>

#include "tests/callouts/align/optimal/RandomSheet.h"

namespace zrcallouts {
namespace {

std::vector<std::uint32_t> SortedPlainly(const std::vector<double>& values) {
    std::vector<std::uint32_t> order(values.size());
    std::iota(order.begin(), order.end(), 0U);
    std::stable_sort(order.begin(), order.end(), [&](auto a, auto b) { return values[a] < values[b]; });
    return order;
}

// Few are compared, many are counted by digits of 24 bits: numbers that differ below those, equal ones, both
// zeros and the greatest of all must come out the same.
TEST(PlaceOrder, IsThatOfAStableSort) {
    std::mt19937 random(7);
    PlaceOrder order;
    for (const std::size_t count : {0U, 1U, 60U, 3000U, 50000U}) {
        for (const double step : {1e-9, 1e-3, 50.0, 4e304}) {
            std::vector<double> values(count);
            for (double& value : values) value = 1000.0 + step * static_cast<double>(random() % 4000);
            for (std::size_t i = 0; i < count; i += 5) values[i] = (i % 2 == 0 ? 1.0 : -1.0) * values[i];
            for (std::size_t i = 0; i < count; i += 7) values[i] = i % 2 == 0 ? 0.0 : -0.0;
            const auto sorted = order.Sort(values);
            EXPECT_EQ(std::vector<std::uint32_t>(sorted.begin(), sorted.end()), SortedPlainly(values))
                << count << " numbers, " << step << " apart";
        }
    }
}

}  // namespace
}  // namespace zrcallouts
