#include "callouts/align/optimal/LaneProfile.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zrcallouts {
namespace {

constexpr double kBin = 4.0;  // pixels
constexpr double kFar = 1e9;  // bins; beyond any page

}  // namespace

LaneProfile::LaneProfile(const LayoutProblem& problem, const std::vector<ScreenBox>& blocks, int axis,
                         double outward)
    : m_axis(axis),
      m_outward(outward),
      m_distance(problem.rules.distance),
      m_gap(problem.rules.gap),
      m_model(problem.model),
      m_start(problem.page.Least(axis)),
      m_least(problem.page.Least(axis)),
      m_greatest(problem.page.Greatest(axis)),
      m_bins(BinOf(problem.page.Greatest(axis)) + 1, 0.0) {
    const auto encloseBox = [this](const ScreenBox& box) {
        Enclose({box.x0, box.y0}, {box.x1, box.y0});
        Enclose({box.x0, box.y1}, {box.x1, box.y1});
        Enclose({box.x0, box.y0}, {box.x0, box.y1});
        Enclose({box.x1, box.y0}, {box.x1, box.y1});
    };
    for (const ModelArea& area : problem.areas) {
        for (const auto& ring : area.rings) {
            for (std::size_t i = 0; i < ring.size(); ++i) Enclose(ring[i], ring[(i + 1) % ring.size()]);
        }
    }
    if (problem.areas.empty()) encloseBox(m_model);
    for (const ScreenBox& block : blocks) encloseBox(block);
    if (problem.rules.pattern != LayoutPattern::Circle) return;
    const double radius = 0.5 * std::hypot(m_model.Length(0), m_model.Length(1)) + m_distance;
    const auto within = [&](int along) {
        const double thick = GreatestLength(problem.labels, along);
        return std::max(std::min({radius, m_model.Middle(along) - problem.page.Least(along) - thick,
                                  problem.page.Greatest(along) - m_model.Middle(along) - thick}),
                        1.0);
    };
    m_radius = within(axis);
    m_depthRadius = within(1 - axis);
    m_least = std::max(m_least, m_model.Middle(axis) - m_radius * std::numbers::sqrt2 / 2.0);
    m_greatest = std::min(m_greatest, m_model.Middle(axis) + m_radius * std::numbers::sqrt2 / 2.0);
}

std::size_t LaneProfile::BinOf(double place) const {
    return static_cast<std::size_t>(std::clamp((place - m_start) / kBin, 0.0, kFar));
}

void LaneProfile::Enclose(double place, double depth) {
    if (place < m_start) return;
    const std::size_t bin = BinOf(place);
    if (bin < m_bins.size())
        m_bins[bin] = std::max(m_bins[bin], (depth - m_model.Middle(1 - m_axis)) * m_outward);
}

/// Only what lies beside the page: a model that fills the screen many times over reaches far beyond.
void LaneProfile::Enclose(const ScreenPoint& from, const ScreenPoint& to) {
    const double way = to[m_axis] - from[m_axis];
    const double end = m_start + kBin * static_cast<double>(m_bins.size());
    const auto share = [&](double place) {
        return way != 0.0 ? std::clamp((place - from[m_axis]) / way, 0.0, 1.0) : 0.0;
    };
    const double first = std::min(share(m_start), share(end));
    const double last = std::max({share(m_start), share(end), way != 0.0 ? 0.0 : 1.0});
    const double steps = std::ceil((last - first) * std::abs(way) / kBin) + 1.0;
    for (double step = 0.0; step <= steps; ++step) {
        const double at = first + (last - first) * step / steps;
        Enclose(from[m_axis] + at * way, from[1 - m_axis] + at * (to[1 - m_axis] - from[1 - m_axis]));
    }
}

double LaneProfile::Rim(double place, double half, double beside) const {
    const std::size_t first = BinOf(place - half - m_gap - beside);
    const std::size_t end = std::min(BinOf(place + half + m_gap + beside) + 1, m_bins.size());
    double reach = 0.0;
    for (std::size_t bin = first; bin < end; ++bin) reach = std::max(reach, m_bins[bin]);
    reach = std::max({reach + m_distance, Circle(place, half), Wedge(place, half)});
    return m_model.Middle(1 - m_axis) + m_outward * reach;
}

/// The circle's reach where the label is nearest to its middle.
double LaneProfile::Circle(double place, double half) const {
    if (m_radius <= 0.0) return 0.0;
    const double off = std::max(std::abs(place - m_model.Middle(m_axis)) - half, 0.0) / m_radius;
    return m_depthRadius * std::sqrt(std::max(1.0 - off * off, 0.0));
}

/// The diagonals of the model's box divide the screen among the sides.
double LaneProfile::Wedge(double place, double half) const {
    const double off = std::abs(place - m_model.Middle(m_axis)) + half + 0.5 * m_gap;
    return off * m_model.Length(1 - m_axis) / std::max(m_model.Length(m_axis), 1.0);
}

}  // namespace zrcallouts
