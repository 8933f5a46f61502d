#include "app/lineart/ChainBuilder.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace zrsheet {
namespace {

/// Finds the links at each node.
class Junctions {
public:
    explicit Junctions(std::span<const ChainLink> links) : m_links(links) {
        m_ends.reserve(2 * links.size());
        for (std::uint32_t i = 0; i < links.size(); ++i) {
            m_ends.emplace_back(links[i].from, i);
            m_ends.emplace_back(links[i].to, i);
        }
        std::sort(m_ends.begin(), m_ends.end());
    }

    bool IsPassage(std::uint64_t node) const { return At(node).size() == 2; }

    /// Requires: the node is a passage.
    std::uint32_t Other(std::uint64_t node, std::uint32_t link) const {
        const auto ends = At(node);
        return ends[0].second == link ? ends[1].second : ends[0].second;
    }

    std::uint64_t FarEnd(std::uint32_t link, std::uint64_t node) const {
        return m_links[link].from == node ? m_links[link].to : m_links[link].from;
    }

private:
    using End = std::pair<std::uint64_t, std::uint32_t>;

    std::span<const End> At(std::uint64_t node) const {
        const auto first = std::lower_bound(m_ends.begin(), m_ends.end(), End(node, 0));
        auto last = first;
        while (last != m_ends.end() && last->first == node) ++last;
        return {first, last};
    }

    std::span<const ChainLink> m_links;
    std::vector<End> m_ends;
};

/// Goes on from the chain's last node until it ends or comes round.
void Follow(const Junctions& junctions, std::vector<bool>& isUsed, LinkChain& chain) {
    while (junctions.IsPassage(chain.nodes.back())) {
        const std::uint32_t next = junctions.Other(chain.nodes.back(), chain.links.back());
        if (isUsed[next]) return;
        isUsed[next] = true;
        chain.links.push_back(next);
        chain.nodes.push_back(junctions.FarEnd(next, chain.nodes.back()));
    }
}

}  // namespace

std::vector<LinkChain> BuildChains(std::span<const ChainLink> links) {
    const Junctions junctions(links);
    std::vector<bool> isUsed(links.size(), false);
    std::vector<LinkChain> chains;
    for (std::uint32_t i = 0; i < links.size(); ++i) {
        if (isUsed[i]) continue;
        isUsed[i] = true;
        LinkChain chain{{links[i].to, links[i].from}, {i}};
        Follow(junctions, isUsed, chain);
        std::reverse(chain.nodes.begin(), chain.nodes.end());
        std::reverse(chain.links.begin(), chain.links.end());
        if (chain.nodes.front() != chain.nodes.back()) Follow(junctions, isUsed, chain);
        chains.push_back(std::move(chain));
    }
    return chains;
}

}  // namespace zrsheet
