#include "zrk/illustration/RankIndex.h"

#include <gtest/gtest.h>

#include <iterator>
#include <random>
#include <set>

namespace zrk::illustration {
namespace {

// Undo puts numbers back in any order, and the index grows by the largest.
TEST(RankIndex, CountsLikeASortedSet) {
    std::mt19937 generator(5);
    const auto random = [&generator](unsigned below) { return static_cast<unsigned>(generator() % below); };
    RankIndex index;
    std::set<unsigned> held;
    unsigned largest = 10;
    for (int step = 0; step < 3000; ++step) {
        if (step % 50 == 0) largest += random(40);
        const unsigned number = 1 + random(largest);
        if (held.insert(number).second) {
            index.Insert(number);
        } else {
            held.erase(number);
            index.Erase(number);
        }
        for (const unsigned asked : {0U, 1U, number, number + 1, largest, largest + 100}) {
            const auto below = std::distance(held.begin(), held.lower_bound(asked));
            ASSERT_EQ(index.CountBelow(asked), static_cast<unsigned>(below))
                << "step " << step << ", " << asked;
        }
    }
}

}  // namespace
}  // namespace zrk::illustration
