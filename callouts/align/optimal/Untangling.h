// Moves labels away whose leaders cross.

#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "callouts/align/optimal/LayoutQuality.h"
#include "callouts/align/optimal/LeaderSwaps.h"
#include "callouts/align/optimal/Seating.h"

namespace zrcallouts {

/// Where exchanging the labels of crossing leaders does not help, or one is too long for the other's lane,
/// one of the two goes to another lane with room, or changes places with a third label. What leaves fewer
/// faults on the sheet, once all others have been exchanged anew, is kept, unless leaders become far longer
/// and faults remain even so.
class Untangling {
public:
    /// What one fault less may cost, in pixels of leader, where others remain.
    static constexpr double kFaultCost = 300.0;

    Untangling(Seating& seating, LeaderSwaps& swaps) : m_seating(seating), m_swaps(swaps) {}

    /// Returns whether no faults are left.
    bool Run();

private:
    /// To a lane, or into the room of another label.
    struct Move {
        double loss = 0.0;  // of leader, as far as can be seen before
        std::uint32_t label = 0;
        std::size_t lane = 0;
        std::uint32_t other = 0;  // the label itself: none
    };
    using Faults = std::vector<LayoutFault>;

    [[nodiscard]] double LeaderCount() const;
    [[nodiscard]] Faults Measure() const;
    bool Mend(const LayoutFault& fault);
    void FindMoves(const LayoutFault& fault);
    void AddMoves(std::uint32_t label);
    bool Try(const Move& move);
    [[nodiscard]] double Worth(const Faults& left) const;
    void Take(std::uint32_t label, std::size_t lane);

    Seating& m_seating;
    LeaderSwaps& m_swaps;
    Faults m_faults;
    std::vector<Move> m_moves;
    std::size_t m_triesLeft = 0;
};

}  // namespace zrcallouts
