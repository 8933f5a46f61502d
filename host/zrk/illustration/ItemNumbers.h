// The numbers that items of a parts list have, and which comes next.

#pragma once

#include <map>
#include <set>

namespace zrk::illustration {

/// Numbers are counted below each item of an assembly by themselves; 0 stands for the top level. A number
/// that was given once is not given again, even when its item is gone. Not synchronised. O(log n).
class ItemNumbers {
public:
    using Lasts = std::map<unsigned, unsigned>;  // by the item above

    /// The next number after all that were given there, counted from `first` in steps.
    unsigned Give(unsigned above, unsigned first, unsigned step);
    /// False when another item has it.
    bool Take(unsigned above, unsigned number);
    /// Takes it without counting it as given: the numbers before it come still.
    void Reserve(unsigned above, unsigned number);
    void Free(unsigned above, unsigned number);

    /// The greatest number that was ever given there; 0 for none.
    unsigned GetLast(unsigned above) const;
    /// Never below what is in use.
    void SetLast(unsigned above, unsigned last);
    /// Those that are not 0.
    Lasts GetLasts() const;

private:
    struct Level {
        std::set<unsigned> used;
        unsigned last = 0;
    };

    std::map<unsigned, Level> m_levels;
};

}  // namespace zrk::illustration
