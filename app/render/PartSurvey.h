// A first, coarse look at the whole picture: what is seen at all, and how fine the lines of each part must
// be.

#pragma once

#include <cstdint>
#include <vector>

#include "app/render/EdgeRule.h"
#include "app/render/SurfaceSampler.h"

namespace zrsheet {

class PartSurvey {
public:
    /// Looks at every sample of `sampler`, which should have few to a page pixel.
    PartSurvey(const SurfaceSampler& sampler, const EdgeRule& rule, std::uint32_t placements,
               unsigned threads);

    /// Is any of the placement seen?
    bool IsSeen(std::uint32_t placement) const { return m_isSeen[placement]; }

    /// The share of their full width that the lines of the placement's part may have. Where many lines cross
    /// little surface - small parts, dense boards - full lines would leave nothing but black.
    double LineShare(std::uint32_t placement) const { return m_lineShare[placement]; }

private:
    std::vector<bool> m_isSeen;
    std::vector<double> m_lineShare;
};

}  // namespace zrsheet
