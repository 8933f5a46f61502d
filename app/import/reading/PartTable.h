// Gives equal geometry one number: files hold the same screw a hundred times, each with a mesh of its own.

#pragma once

#include <cstddef>
#include <unordered_map>
#include <vector>

#include "app/import/Assembly.h"

namespace zrsheet {

/// Parts in the order of their first appearance. One thread.
class PartTable {
public:
    /// The number of the part with exactly these vertices and triangles; its name is that of the first,
    /// unless the first had none. Linear in the part's size.
    int Add(AssemblyPart part);

    [[nodiscard]] const std::vector<AssemblyPart>& Parts() const { return m_parts; }
    [[nodiscard]] std::vector<AssemblyPart> Take() { return std::move(m_parts); }

private:
    std::vector<AssemblyPart> m_parts;
    std::unordered_multimap<std::size_t, std::size_t> m_byHash;  // only looked up, never walked
};

}  // namespace zrsheet
