// Moves single labels to other lanes where that shortens the sheet's leaders.

#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "callouts/align/optimal/Seating.h"

namespace zrcallouts {

/// What a label's room is worth on a crowded lane is known from its neighbours' pulls, and from how those
/// change on the way: hardly any move is tried that does not gain. Keeps its memory from call to call.
class Relocation {
public:
    explicit Relocation(Seating& seating);

    /// Returns whether anything changed.
    bool Run();

private:
    struct Move {
        double gain = 0.0;  // as far as the pulls tell
        std::uint32_t label = 0;
        std::size_t lane = 0;
    };
    /// Labels that touch each other, beside a gap.
    struct Chain {
        double pull = 0.0;       // into the gap
        double stiffness = 0.0;  // by which each pixel into the gap lessens the pull

        void Add(double morePull, double moreStiffness) {
            pull += morePull;
            stiffness += moreStiffness;
        }
        /// What it costs to push it out of the gap; into it, below 0.
        [[nodiscard]] double CostBy(double way) const { return way * (pull + 0.5 * stiffness * way); }
        /// How far into the gap it comes by itself.
        [[nodiscard]] double Ease(double most) const;
    };
    /// A label's neighbours, without itself.
    struct Room {
        Chain before;
        Chain after;
    };
    struct Gap {
        double least = 0.0;
        double greatest = 0.0;
    };

    void Appraise(std::size_t lane);
    void AppraiseChain(std::size_t lane, std::size_t first, std::size_t end);
    [[nodiscard]] static double Share(const Chain& chain, const Chain& other, double way);
    [[nodiscard]] Chain ChainUpTo(std::size_t lane, std::size_t index) const;
    [[nodiscard]] Chain ChainFrom(std::size_t lane, std::size_t index) const;
    [[nodiscard]] double Relief(std::uint32_t label) const;
    [[nodiscard]] Gap GapBefore(std::size_t lane, std::size_t index, std::uint32_t label) const;
    [[nodiscard]] double CostIn(std::size_t lane, std::uint32_t label) const;
    [[nodiscard]] bool MayGain(std::uint32_t label) const;
    void FindMoves();
    bool Try(const Move& move);
    Seating::Window Leave(std::uint32_t label);
    Seating::Window Join(std::size_t lane, std::uint32_t label);
    [[nodiscard]] std::size_t PlaceIn(std::size_t lane, double wish) const;

    Seating& m_seating;
    std::vector<std::vector<Room>> m_rooms;  // of each lane's labels
    std::vector<std::uint64_t> m_appraised;  // when each lane was
    std::vector<Move> m_moves;
    Seating::Labels m_left;
    Seating::Labels m_joined;
};

}  // namespace zrcallouts
