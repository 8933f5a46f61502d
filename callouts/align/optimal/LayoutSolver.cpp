#include "callouts/align/optimal/LayoutSolver.h"

#include <utility>

#include "callouts/align/optimal/Clearing.h"
#include "callouts/align/optimal/LaneChoice.h"
#include "callouts/align/optimal/LaneExchange.h"
#include "callouts/align/optimal/LayoutQuality.h"
#include "callouts/align/optimal/LeaderSwaps.h"
#include "callouts/align/optimal/Relocation.h"
#include "callouts/align/optimal/Seating.h"
#include "callouts/align/optimal/SlotAssignment.h"

namespace zrcallouts {
namespace {

constexpr int kMostRounds = 4;       // of exchanging and moving
constexpr double kKeepLoss = 0.005;  // of the cost, which keeping the labels' sides may cost

class Improver {
public:
    explicit Improver(Seating& seating)
        : m_swaps(seating), m_relocation(seating), m_exchange(seating), m_clearing(seating) {
        m_swaps.Run();
    }

    /// Labels go where they are cheapest, whatever is in their leaders' way.
    void Shorten() {
        for (int round = 0; round < kMostRounds; ++round) {
            const bool isMoved = m_relocation.Run();
            const bool isExchanged = m_exchange.Run();
            if ((!isMoved && !isExchanged) || !m_swaps.Run()) break;
        }
    }

    void Clear() {
        for (int round = 0; round < kMostRounds && m_clearing.Run(); ++round) {
            m_relocation.Run();
            m_swaps.Run();
        }
        m_swaps.RunAnew();
    }

private:
    LeaderSwaps m_swaps;
    Relocation m_relocation;
    LaneExchange m_exchange;
    Clearing m_clearing;
};

void Improve(Seating& seating) {
    Improver improver(seating);
    improver.Shorten();
    improver.Clear();
}

std::vector<ScreenPoint> CentresBefore(const LayoutProblem& problem) {
    std::vector<ScreenPoint> centres;
    centres.reserve(problem.labels.size());
    for (const LayoutLabel& label : problem.labels) centres.push_back(label.centre);
    return centres;
}

std::vector<ScreenPoint> CentresOf(const Seating& seating) {
    auto centres = CentresBefore(seating.Problem());
    for (std::uint32_t label = 0; label < centres.size(); ++label) {
        if (!seating.Problem().labels[label].isPinned) centres[label] = seating.CentreOf(label);
    }
    return centres;
}

double CostOf(const Seating& seating) {
    double cost = 0.0;
    for (std::size_t lane = 0; lane < seating.LaneCount(); ++lane)
        cost += seating.CostOf(seating.Whole(lane));
    return cost;
}

/// A layout among others.
struct Layout {
    std::vector<ScreenPoint> centres;
    double cost = 0.0;
    std::size_t faults = 0;
};

Layout LayoutOf(const Seating& seating) {
    auto centres = CentresOf(seating);
    const std::size_t faults = MeasureLayout(seating.Problem(), centres).faults.size();
    return {std::move(centres), CostOf(seating), faults};
}

void Consider(const Seating& seating, double loss, Layout& best) {
    Layout layout = LayoutOf(seating);
    if (layout.cost < best.cost * (1.0 + loss) && layout.faults <= best.faults) best = std::move(layout);
}

/// Begins anew with the slots that the lanes offer.
void TrySlots(const Seating& lanes, Layout& best) {
    const auto choice = AssignSlots(lanes);
    if (choice.empty()) return;
    Seating seating(lanes.Problem());
    seating.Seat(choice);
    Improve(seating);
    Consider(seating, 0.0, best);
}

/// Leaves labels on their sides.
void TryAsBefore(const LayoutProblem& problem, Layout& best) {
    Seating seating(problem);
    const auto choice = KeepLanes(seating);
    if (choice.empty()) return;
    seating.Seat(choice);
    Improver(seating).Clear();
    Consider(seating, kKeepLoss, best);
}

/// Where little room is left there are many layouts that are nearly as good as each other, far apart. So this
/// begins in several ways.
std::vector<ScreenPoint> SolveFull(const Seating& solved) {
    Layout best = LayoutOf(solved);
    TrySlots(Seating(solved.Problem()), best);
    // What clearing has left of the lanes: where they meet, room may be better left free.
    TrySlots(solved, best);
    TryAsBefore(solved.Problem(), best);
    return best.centres;
}

}  // namespace

std::vector<ScreenPoint> SolveLayout(const LayoutProblem& problem) {
    Seating seating(problem);
    if (seating.LaneCount() == 0) return CentresBefore(problem);
    seating.Seat(ChooseLanes(seating));
    Improve(seating);
    return IsNearlyFull(seating) ? SolveFull(seating) : CentresOf(seating);
}

}  // namespace zrcallouts
