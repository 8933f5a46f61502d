#include "app/render/ParallelFor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <stdexcept>
#include <vector>

namespace zrsheet {
namespace {

TEST(ParallelFor, DoesEveryPieceOnce) {
    for (const unsigned threads : {1U, 3U, 16U}) {
        std::vector<std::atomic<int>> calls(7);
        ParallelFor(calls.size(), threads, [&](std::size_t i) { ++calls[i]; });
        EXPECT_TRUE(std::all_of(calls.begin(), calls.end(), [](const auto& count) { return count == 1; }))
            << threads;
    }
}

// An exception that left a thread would end the process.
TEST(ParallelFor, HandsAnExceptionToItsCaller) {
    EXPECT_THROW(ParallelFor(100, 4,
                             [](std::size_t i) {
                                 if (i == 42) throw std::runtime_error("full");
                             }),
                 std::runtime_error);
}

}  // namespace
}  // namespace zrsheet
