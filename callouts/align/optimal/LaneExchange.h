// Exchanges labels between full lanes where that shortens the sheet's leaders.

#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "callouts/align/optimal/Seating.h"

namespace zrcallouts {

/// A full lane takes a label only for another. Pulls tell what an exchange saves at the most, so hardly any
/// are tried in vain. Keeps its memory from call to call.
class LaneExchange {
public:
    explicit LaneExchange(Seating& seating) : m_seating(seating), m_pulls(seating.LaneCount()) {}

    /// Returns whether anything changed.
    bool Run();

private:
    /// One label takes another one's room.
    struct Exchange {
        double gain = 0.0;  // at the most
        std::uint32_t label = 0;
        std::uint32_t other = 0;
    };
    /// A label that would like to go to another lane.
    struct Guest {
        std::uint32_t label = 0;
        std::size_t lane = 0;
        double gain = 0.0;
    };

    void Appraise(std::size_t lane);
    void FindExchanges();
    void FindPartners(const Guest& guest);
    [[nodiscard]] double Shift(std::size_t lane, std::uint32_t leaving, std::size_t place) const;
    [[nodiscard]] bool Fits(std::uint32_t label, std::uint32_t instead) const;
    [[nodiscard]] Seating::Labels RowWith(std::uint32_t label, std::uint32_t instead) const;
    bool Try(const Exchange& exchange);

    Seating& m_seating;
    std::vector<std::vector<double>> m_pulls;  // of each lane's labels, summed up to each
    std::vector<std::size_t> m_narrow;         // lanes that have no room for some label
    std::vector<Exchange> m_exchanges;
};

}  // namespace zrcallouts
