// Finds out which nodes of faces that were triangulated one by one are the same corner of the part.

#pragma once

#include <cstdint>
#include <gp_Pnt.hxx>
#include <span>
#include <vector>

namespace zrsheet {

/// Nodes are numbered from 0. One thread.
class VertexWeld {
public:
    explicit VertexWeld(std::vector<gp_Pnt> places);

    /// Makes two nodes one, unless they lie further than `tolerance` from each other.
    void Join(std::uint32_t a, std::uint32_t b, double tolerance);

    /// Makes the nodes of two rows one by one the same. Rows of different lengths stay apart; the second may
    /// run the other way.
    void JoinRows(std::span<const std::uint32_t> a, std::span<const std::uint32_t> b, double tolerance);

    /// The place of the node, and of all that are one with it: that of their first.
    [[nodiscard]] const gp_Pnt& PlaceOf(std::uint32_t node);

    [[nodiscard]] double Distance(std::uint32_t a, std::uint32_t b) const;

private:
    std::uint32_t FirstOf(std::uint32_t node);

    std::vector<gp_Pnt> m_places;
    std::vector<std::uint32_t> m_towardsFirst;
};

}  // namespace zrsheet
