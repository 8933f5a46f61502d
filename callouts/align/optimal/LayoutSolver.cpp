#include "callouts/align/optimal/LayoutSolver.h"

#include <algorithm>

#include "callouts/align/optimal/Clearing.h"
#include "callouts/align/optimal/LaneChoice.h"
#include "callouts/align/optimal/LaneExchange.h"
#include "callouts/align/optimal/LeaderSwaps.h"
#include "callouts/align/optimal/Relocation.h"
#include "callouts/align/optimal/Seating.h"

namespace zrcallouts {
namespace {

constexpr int kMostRounds = 4;  // of exchanging and moving

}  // namespace

std::vector<ScreenPoint> SolveLayout(const LayoutProblem& problem) {
    std::vector<ScreenPoint> centres;
    centres.reserve(problem.labels.size());
    for (const LayoutLabel& label : problem.labels) centres.push_back(label.centre);
    Seating seating(problem);
    if (seating.LaneCount() == 0) return centres;
    seating.Seat(ChooseLanes(seating));
    LeaderSwaps swaps(seating);
    Relocation relocation(seating);
    LaneExchange exchange(seating);
    Clearing clearing(seating);
    swaps.Run();
    for (int round = 0; round < kMostRounds; ++round) {
        const bool isMoved = relocation.Run();
        const bool isExchanged = exchange.Run();
        if ((!isMoved && !isExchanged) || !swaps.Run()) break;
    }
    for (int round = 0; round < kMostRounds && clearing.Run(); ++round) {
        relocation.Run();
        swaps.Run();
    }
    swaps.RunAnew();
    for (std::uint32_t label = 0; label < problem.labels.size(); ++label) {
        if (!problem.labels[label].isPinned) centres[label] = seating.CentreOf(label);
    }
    return centres;
}

}  // namespace zrcallouts
