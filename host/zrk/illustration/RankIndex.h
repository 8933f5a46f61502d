// How many numbers of a growing set are smaller than a given one.

#pragma once

#include <cstddef>
#include <vector>

namespace zrk::illustration {

/// Holds numbers from 1 upwards; everything is O(log largest number). Not synchronised.
class RankIndex {
public:
    /// Requires: not held yet.
    void Insert(unsigned number);
    /// Requires: held.
    void Erase(unsigned number) { Add(number, -1); }
    unsigned CountBelow(unsigned number) const;

private:
    void Add(std::size_t place, int change);

    // A binary indexed tree: place i sums the i & -i places that end at i.
    std::vector<int> m_sums{0};
};

}  // namespace zrk::illustration
