#include "app/render/PartSurvey.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <span>

#include "app/render/ParallelFor.h"

namespace zrsheet {
namespace {

// Page pixels of surface to one of line: with more the lines have their full width, with less a share of it.
constexpr double kRoomySurface = 6.0;
constexpr double kLeastShare = 0.4;

struct Tally {
    std::uint64_t samples = 0;
    std::uint64_t lines = 0;
};
using Tallies = std::map<std::uint32_t, Tally>;  // by part

class Grid {
public:
    Grid(const SurfaceSampler& sampler, unsigned threads)
        : m_width(static_cast<std::size_t>(sampler.GetWidth())),
          m_height(static_cast<std::size_t>(sampler.GetHeight())) {
        m_samples.resize(m_width * m_height);
        ParallelFor(m_height, threads, [&](std::size_t y) {
            sampler.SampleRow(static_cast<int>(y), 0, std::span(m_samples).subspan(y * m_width, m_width));
        });
    }

    std::size_t GetWidth() const { return m_width; }
    std::size_t GetHeight() const { return m_height; }
    const SurfaceSample& At(std::size_t x, std::size_t y) const { return m_samples[y * m_width + x]; }

private:
    std::size_t m_width;
    std::size_t m_height;
    std::vector<SurfaceSample> m_samples;
};

void CountLine(Tallies& tallies, const SurfaceSample& a, const SurfaceSample& b) {
    if (!a.IsGround()) ++tallies[a.part].lines;
    if (!b.IsGround() && b.part != a.part) ++tallies[b.part].lines;
}

Tallies CountAll(const Grid& grid, const EdgeRule& rule) {
    Tallies tallies;
    for (std::size_t y = 0; y < grid.GetHeight(); ++y) {
        for (std::size_t x = 0; x < grid.GetWidth(); ++x) {
            const SurfaceSample& here = grid.At(x, y);
            const int column = static_cast<int>(x);
            const int row = static_cast<int>(y);
            if (!here.IsGround()) ++tallies[here.part].samples;
            if (x + 1 < grid.GetWidth() &&
                rule.LineWidth(here, grid.At(x + 1, y), column, row, false) > 0.0) {
                CountLine(tallies, here, grid.At(x + 1, y));
            }
            if (y + 1 < grid.GetHeight() &&
                rule.LineWidth(here, grid.At(x, y + 1), column, row, true) > 0.0) {
                CountLine(tallies, here, grid.At(x, y + 1));
            }
        }
    }
    return tallies;
}

}  // namespace

PartSurvey::PartSurvey(const SurfaceSampler& sampler, const EdgeRule& rule, std::uint32_t placements,
                       unsigned threads)
    : m_isSeen(placements, false), m_lineShare(placements, kLeastShare) {
    const Grid grid(sampler, threads);
    const Tallies tallies = CountAll(grid, rule);
    for (std::size_t y = 0; y < grid.GetHeight(); ++y) {
        for (std::size_t x = 0; x < grid.GetWidth(); ++x) {
            const SurfaceSample& sample = grid.At(x, y);
            if (sample.IsGround() || m_isSeen[sample.placement]) continue;
            const Tally& tally = tallies.at(sample.part);
            const double surface = static_cast<double>(tally.samples) / rule.SamplesPerPagePixel();
            const double share =
                surface / (kRoomySurface * static_cast<double>(std::max<std::uint64_t>(tally.lines, 1)));
            m_isSeen[sample.placement] = true;
            m_lineShare[sample.placement] = std::clamp(share, kLeastShare, 1.0);
        }
    }
}

}  // namespace zrsheet
