// Moves single labels to other lanes where that shortens the sheet's leaders.

#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "callouts/align/optimal/Seating.h"

namespace zrcallouts {

/// What a label's room is worth on a crowded lane is known from its neighbours' pulls: that is what they save
/// when it goes, or pay when it comes, as long as little moves. So the moves worth a trial are found without
/// trying. What was tried in vain is not tried again until one of the lanes changes. Keeps its memory from
/// call to call.
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
    /// A label's room.
    struct Room {
        double before = 0.0;  // pulls of those before it that touch each other up to it
        double after = 0.0;
        bool isFirstHeld = false;  // do those touch the lane's end?
        bool isLastHeld = false;
    };

    /// What a label's lane saves when it goes.
    struct Leaving {
        Seating::Window window;
        double saved = 0.0;
        std::uint64_t found = 0;  // when
    };

    void Appraise(std::size_t lane);
    [[nodiscard]] double Relief(std::uint32_t label) const;
    [[nodiscard]] double Price(std::uint32_t label, std::size_t lane) const;
    [[nodiscard]] double GainOf(std::uint32_t label, double relief, std::size_t lane) const;
    void FindMoves();
    bool Try(const Move& move);
    /// Whether the move would be the same as when it was tried last.
    [[nodiscard]] bool IsVain(const Move& move) const;
    [[nodiscard]] const Leaving& Leave(std::uint32_t label);
    [[nodiscard]] const Seating::Labels& Left(const Seating::Window& window, std::uint32_t label);
    [[nodiscard]] std::size_t PlaceIn(const Seating::Labels& labels, std::size_t lane, double wish) const;

    Seating& m_seating;
    std::vector<std::vector<Room>> m_rooms;  // of each lane's labels
    std::vector<Move> m_moves;
    std::vector<Leaving> m_leaving;      // of each label
    std::vector<std::uint64_t> m_tried;  // each label on each lane: when it was tried last
    Seating::Labels m_left;
    Seating::Labels m_joined;
};

}  // namespace zrcallouts
