#include "app/import/reading/PartTable.h"

#include <functional>
#include <string_view>

namespace zrsheet {
namespace {

template <class T>
std::size_t HashOf(const std::vector<T>& values) {
    return std::hash<std::string_view>{}(
        {reinterpret_cast<const char*>(values.data()), values.size() * sizeof(T)});
}

std::size_t GeometryHash(const AssemblyPart& part) {
    return HashOf(part.positions) * 31 + HashOf(part.indices);
}

}  // namespace

int PartTable::Add(AssemblyPart part) {
    const std::size_t hash = GeometryHash(part);
    const auto [first, last] = m_byHash.equal_range(hash);
    for (auto candidate = first; candidate != last; ++candidate) {
        AssemblyPart& known = m_parts[candidate->second];
        if (known.positions != part.positions || known.indices != part.indices) continue;
        if (known.name.empty()) known.name = std::move(part.name);
        return static_cast<int>(candidate->second);
    }
    m_byHash.emplace(hash, m_parts.size());
    m_parts.push_back(std::move(part));
    return static_cast<int>(m_parts.size()) - 1;
}

}  // namespace zrsheet
