// Exchanges labels until no leaders cross.

#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "callouts/align/optimal/ScreenGeometry.h"
#include "callouts/align/optimal/Seating.h"

namespace zrcallouts {

/// Two crossing leaders are longer than the same two with their labels exchanged, so exchanging comes to an
/// end, and without crossings, where labels are of one size. Keeps its memory from call to call.
class LeaderSwaps {
public:
    explicit LeaderSwaps(Seating& seating);

    /// Exchanges neighbours and places anew until nothing is to gain: enough while labels look for their
    /// sides. Returns whether anything changed.
    bool Sort();
    /// The same for all labels.
    bool Run();
    /// The same, those that have hardly moved since the last run included.
    bool RunAnew() {
        m_seen = 0;
        m_isStuck = false;
        return Run();
    }
    /// Whether since the last run anew any leaders crossed and were not exchanged.
    [[nodiscard]] bool IsStuck() const { return m_isStuck; }

private:
    /// In all runs: many times what labels with room need. Where hopelessly many crowd around one picture,
    /// all pairs of leaders cross, and the sheet is of no use however long they are exchanged.
    static constexpr std::size_t kMostPairs = 30'000'000;

    /// A label's leaders.
    struct Span {
        ScreenBox box;
        ScreenSegment leader;   // the last one
        bool isSingle = false;  // is that the only one?
        double from = 0.0;      // along the lane, the label's place included
        double to = 0.0;
        double reach = 0.0;   // the greatest `to` of all spans up to here
        double back = 0.0;    // the least `from` of all spans from here on
        bool isFresh = true;  // moved since it was last looked at

        /// Answers for labels with several leaders as far as boxes tell.
        [[nodiscard]] bool MayCross(const Span& other) const {
            return box.Overlaps(other.box) && (!isSingle || !other.isSingle || DoCross(leader, other.leader));
        }
    };
    struct LaneSpans {
        std::vector<Span> spans;  // of the labels, in their order
        ScreenBox box;            // of all their leaders
        bool isFresh = true;
        bool isChanged = false;
    };

    void Measure(std::size_t lane);
    void MeasureOne(std::size_t lane, std::size_t index);
    void FindReaches(std::size_t lane, std::size_t first, std::size_t last);
    bool SortNeighbours(std::size_t lane);
    bool Uncross();
    bool SwapWithin(std::size_t lane);
    bool SwapBetween(std::size_t a, std::size_t b);
    bool SwapAcross(std::size_t a, std::size_t i, std::size_t b);
    /// Whether one more pair of leaders may be looked at, which is counted.
    bool MayLook() { return m_pairsLeft > 0 && m_pairsLeft-- > 0; }
    bool TrySwap(std::uint32_t a, std::uint32_t b, bool areNeighbours);
    [[nodiscard]] bool IsWorthwhile(std::uint32_t a, std::uint32_t b, double gain, bool doCross) const;
    [[nodiscard]] bool WereInOrder(std::uint32_t a, std::uint32_t b) const;

    Seating& m_seating;
    std::vector<LaneSpans> m_lanes;
    bool m_isStuck = false;
    std::size_t m_pairsLeft = kMostPairs;
    std::uint64_t m_sorted = 0;  // what moved up to then stands well beside its neighbours
    std::uint64_t m_seen = 0;    // what moved up to then crosses nothing
};

}  // namespace zrcallouts
