#include "callouts/align/optimal/LayoutSolver.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "callouts/align/optimal/Clearing.h"
#include "callouts/align/optimal/LaneChoice.h"
#include "callouts/align/optimal/LayoutQuality.h"
#include "callouts/align/optimal/LeaderSwaps.h"
#include "callouts/align/optimal/Relocation.h"
#include "callouts/align/optimal/Seating.h"
#include "callouts/align/optimal/SlotAssignment.h"
#include "callouts/align/optimal/Untangling.h"

namespace zrcallouts {
namespace {

constexpr int kMostRounds = 4;             // of moving and exchanging
constexpr double kKeepLoss = 0.005;        // of the cost, which keeping the labels' sides may cost
constexpr int kPatience = 30;              // rounds of charging without a better layout
constexpr double kCharge = 100.0;          // pixels of leader
constexpr std::size_t kMostCharged = 100;  // labels of a sheet
constexpr std::size_t kMostFaults = 20;    // more are no sheet that could be mended

class Improver {
public:
    explicit Improver(Seating& seating)
        : m_swaps(seating), m_relocation(seating), m_clearing(seating), m_untangling(seating, m_swaps) {
        m_swaps.Sort();
    }

    /// Labels go where they are cheapest, whatever is in their leaders' way.
    void Shorten() {
        for (int round = 0; round < kMostRounds; ++round) {
            if (!m_relocation.Run() || !m_swaps.Sort()) break;
        }
    }

    /// Returns whether leaders cross even so.
    bool Clear() {
        for (int round = 0; round < kMostRounds && m_clearing.Run(); ++round) {
            m_relocation.Run();
            m_swaps.Run();
        }
        m_swaps.RunAnew();
        return m_swaps.IsStuck() && !m_untangling.Run();
    }

private:
    LeaderSwaps m_swaps;
    Relocation m_relocation;
    Clearing m_clearing;
    Untangling m_untangling;
};

/// Returns whether leaders cross in the end.
bool Improve(Seating& seating) {
    Improver improver(seating);
    improver.Shorten();
    return improver.Clear();
}

/// A layout among others.
struct Layout {
    std::vector<ScreenPoint> centres;
    double cost = 0.0;
    std::vector<LayoutFault> faults;
};

Layout LayoutOf(const Seating& seating) {
    auto centres = seating.Centres();
    auto faults = MeasureLayout(seating.Problem(), centres).faults;
    return {std::move(centres), seating.Cost() - seating.Charges(), std::move(faults)};
}

/// Whether the layout became the best one. It may cost a bit more, and fewer faults may cost much; none, all.
bool Consider(const Layout& layout, double loss, Layout& best) {
    if (layout.faults.size() > best.faults.size()) return false;
    const bool isMended = layout.faults.empty() && !best.faults.empty();
    const auto spared = static_cast<double>(best.faults.size() - layout.faults.size());
    if (!isMended && layout.cost >= best.cost * (1.0 + loss) + Untangling::kFaultCost * spared) return false;
    best = layout;
    return true;
}

/// Begins anew with the slots that the lanes offer.
void TrySlots(const Seating& lanes, Layout& best) {
    const auto choice = AssignSlots(lanes);
    if (choice.empty()) return;
    Seating seating(lanes.Problem());
    seating.Seat(choice);
    Improve(seating);
    Consider(LayoutOf(seating), 0.0, best);
}

/// Leaves labels on their sides: where many layouts are nearly as good, or as bad, one more must not differ.
void TryAsBefore(const LayoutProblem& problem, Layout& best) {
    Seating seating(problem);
    const auto choice = KeepLanes(seating);
    if (choice.empty()) return;
    seating.Seat(choice);
    Improver(seating).Clear();
    Consider(LayoutOf(seating), kKeepLoss, best);
}

/// Where little room is left there are many layouts that are nearly as good as each other, far apart. So this
/// begins in several ways.
void TryFull(const Seating& solved, Layout& best) {
    TrySlots(Seating(solved.Problem()), best);
    // What clearing has left of the lanes: where they meet, room may be better left free.
    TrySlots(solved, best);
}

/// Labels that are in each other's way pay for standing on their lanes. Returns whether any are.
bool Charge(Seating& seating, const std::vector<LayoutFault>& faults) {
    bool isAnyCharged = false;
    for (const LayoutFault& fault : faults) {
        if (fault.kind != LayoutFaultKind::LeadersCross && fault.kind != LayoutFaultKind::LeaderMeetsLabel)
            continue;
        for (const std::uint32_t label : {fault.label, fault.other}) {
            if (seating.Problem().labels[label].isPinned) continue;
            seating.Charge(label, seating.LaneOf(label), kCharge);
            isAnyCharged = true;
        }
    }
    return isAnyCharged;
}

/// The leaders of labels with several mostly cross wherever the labels are.
bool MayGiveWay(const std::vector<LayoutLabel>& labels) {
    return labels.size() <= kMostCharged && std::all_of(labels.begin(), labels.end(), [](const auto& label) {
               return label.anchors.size() <= 1;
           });
}

/// All are placed anew, the labels in each other's way paying more from round to round. So several come to
/// make way for one that could not by itself, as wires do that compete for the same channels.
void TryCharging(Seating& seating, Layout& best) {
    Layout layout = LayoutOf(seating);
    if (layout.faults.size() > kMostFaults || !MayGiveWay(seating.Problem().labels)) return;
    for (int left = kPatience; left > 0 && !best.faults.empty(); --left) {
        if (!Charge(seating, layout.faults)) break;
        seating.Seat(ChooseLanes(seating));
        Improve(seating);
        layout = LayoutOf(seating);
        if (Consider(layout, 0.0, best)) left = kPatience;
    }
}

}  // namespace

std::vector<ScreenPoint> SolveLayout(const LayoutProblem& problem) {
    Seating seating(problem);
    if (seating.LaneCount() == 0) return seating.Centres();
    seating.Seat(ChooseLanes(seating));
    const bool isTangled = Improve(seating);
    if (!isTangled && !IsNearlyFull(seating)) return seating.Centres();
    Layout best = LayoutOf(seating);
    if (IsNearlyFull(seating)) TryFull(seating, best);
    TryAsBefore(problem, best);
    TryCharging(seating, best);
    return best.centres;
}

}  // namespace zrcallouts
