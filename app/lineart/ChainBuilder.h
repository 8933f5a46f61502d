// Joins single links that share nodes to chains as long as they can be.

#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace zrsheet {

/// Between two nodes, which are named by any numbers.
struct ChainLink {
    std::uint64_t from = 0;
    std::uint64_t to = 0;
};

/// `nodes` are one more than `links`; a closed chain has its first node at the end once more.
struct LinkChain {
    std::vector<std::uint64_t> nodes;
    std::vector<std::uint32_t> links;  // positions in what was given
};

/// Chains run through nodes that have two links and end at all others. Each link is in one chain. The order
/// of the links decides that of the chains and where closed ones begin. O(n log n).
[[nodiscard]] std::vector<LinkChain> BuildChains(std::span<const ChainLink> links);

}  // namespace zrsheet
