#include "callouts/align/optimal/CheapestAssignment.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <random>
#include <set>

namespace zrcallouts {
namespace {

using Costs = std::vector<std::vector<double>>;

double CostOf(const Costs& costs, const std::vector<std::size_t>& places) {
    double cost = 0.0;
    for (std::size_t thing = 0; thing < costs.size(); ++thing) cost += costs[thing][places[thing]];
    return cost;
}

double LeastOfAll(const Costs& costs) {
    std::vector<std::size_t> places(costs.front().size());
    std::iota(places.begin(), places.end(), 0);
    double least = std::numeric_limits<double>::infinity();
    do {
        least = std::min(least, CostOf(costs, places));
    } while (std::next_permutation(places.begin(), places.end()));
    return least;
}

// All ways to give up to six things seven places, costs below zero among them.
TEST(CheapestAssignment, IsAsCheapAsTheCheapestOfAllWays) {
    std::mt19937 random(1);
    for (int round = 0; round < 60; ++round) {
        Costs costs(1 + random() % 6, std::vector<double>(6 + random() % 2));
        for (auto& row : costs) {
            for (double& cost : row) cost = static_cast<double>(random() % 100) - 20.0;
        }
        const auto places = CheapestAssignment(costs);
        EXPECT_EQ(std::set<std::size_t>(places.begin(), places.end()).size(), costs.size());
        EXPECT_DOUBLE_EQ(CostOf(costs, places), LeastOfAll(costs)) << "round " << round;
    }
}

}  // namespace
}  // namespace zrcallouts
