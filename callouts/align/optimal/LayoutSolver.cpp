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
#include "callouts/align/optimal/Untangling.h"

namespace zrcallouts {
namespace {

constexpr int kMostRounds = 4;       // of exchanging and moving
constexpr double kKeepLoss = 0.005;  // of the cost, which keeping the labels' sides may cost

class Improver {
public:
    explicit Improver(Seating& seating)
        : m_swaps(seating),
          m_relocation(seating),
          m_exchange(seating),
          m_clearing(seating),
          m_untangling(seating, m_swaps) {
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
        if (m_swaps.IsStuck()) m_untangling.Run();
    }

private:
    LeaderSwaps m_swaps;
    Relocation m_relocation;
    LaneExchange m_exchange;
    Clearing m_clearing;
    Untangling m_untangling;
};

void Improve(Seating& seating) {
    Improver improver(seating);
    improver.Shorten();
    improver.Clear();
}

/// A layout among others.
struct Layout {
    std::vector<ScreenPoint> centres;
    double cost = 0.0;
    std::size_t faults = 0;
};

Layout LayoutOf(const Seating& seating) {
    auto centres = seating.Centres();
    const std::size_t faults = MeasureLayout(seating.Problem(), centres).faults.size();
    return {std::move(centres), seating.Cost(), faults};
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
    if (seating.LaneCount() == 0) return seating.Centres();
    seating.Seat(ChooseLanes(seating));
    Improve(seating);
    return IsNearlyFull(seating) ? SolveFull(seating) : seating.Centres();
}

}  // namespace zrcallouts
