#include "callouts/align/optimal/LabelSpacer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/callouts/align/optimal/RandomSheet.h"

namespace zrcallouts {
namespace {

constexpr double kGap = 8.0;
constexpr double kExact = 1e-6;

struct Line {
    std::vector<SpacedLabel> labels;
    double least = 0.0;
    double greatest = 0.0;
};

Line RandomLine(std::mt19937& random) {
    Line line;
    line.greatest = 200.0 + 3000.0 * Random(random);
    const auto count = 1 + random() % 40;
    for (std::size_t i = 0; i < count; ++i) {
        line.labels.push_back({line.greatest * (1.4 * Random(random) - 0.2), 0.1 + Random(random),
                               10.0 + 60.0 * Random(random)});
    }
    return line;
}

double Need(const Line& line, std::size_t i) {
    return 0.5 * (line.labels[i].length + line.labels[i + 1].length) + kGap;
}

/// The proof that no other places are better (Karush, Kuhn and Tucker): each contact of a run of labels that
/// touch, the line's ends included, can be given a pressure that is not negative and balances what pulls the
/// labels to their wishes.
void ExpectBest(const Line& line, std::span<const double> places) {
    const auto pull = [&](std::size_t i) {
        return line.labels[i].weight * (line.labels[i].wish - places[i]);
    };
    for (std::size_t first = 0, end = 0; first < places.size(); first = end) {
        double sum = pull(first);
        for (end = first + 1;
             end < places.size() && places[end] - places[end - 1] < Need(line, end - 1) + kExact; ++end)
            sum += pull(end);
        const bool isAtStart = places[first] - 0.5 * line.labels[first].length < line.least + kExact;
        const bool isAtEnd = places[end - 1] + 0.5 * line.labels[end - 1].length > line.greatest - kExact;
        double pressure = 0.0;
        if (isAtStart) pressure = isAtEnd ? 1e9 : -sum;
        for (std::size_t i = first; i < end; ++i) {
            EXPECT_GE(pressure, -kExact) << "before label " << i;
            pressure += pull(i);
        }
        EXPECT_GE(pressure, -1e-3) << "after label " << end - 1;
        EXPECT_TRUE(isAtEnd || pressure < 1e-3) << "after label " << end - 1;
    }
}

double TightLength(const Line& line) {
    double length = 0.5 * (line.labels.front().length + line.labels.back().length);
    for (std::size_t i = 0; i + 1 < line.labels.size(); ++i) length += Need(line, i);
    return length;
}

// Random lines of all fillings; about every third is too short, and then labels hang over both ends alike.
TEST(LabelSpacer, KeepsLabelsApartAndMovesThemLeast) {
    LabelSpacer spacer;
    std::mt19937 random(5);
    for (int round = 0; round < 2000; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        const Line line = RandomLine(random);
        const auto places = spacer.Space(line.labels, kGap, line.least, line.greatest);
        for (std::size_t i = 0; i + 1 < places.size(); ++i)
            EXPECT_GE(places[i + 1] - places[i], Need(line, i) - kExact) << "label " << i;
        const double over = std::max(0.5 * (TightLength(line) - line.greatest), 0.0);
        EXPECT_GE(places.front() - 0.5 * line.labels.front().length, line.least - over - kExact);
        EXPECT_LE(places.back() + 0.5 * line.labels.back().length, line.greatest + over + kExact);
        if (over == 0.0) ExpectBest(line, places);
        if (testing::Test::HasFailure()) return;
    }
}

}  // namespace
}  // namespace zrcallouts
