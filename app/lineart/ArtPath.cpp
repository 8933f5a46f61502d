#include "app/lineart/ArtPath.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace zrsheet {
namespace {

double DistanceToSegment(const ArtPoint& p, const ArtPoint& a, const ArtPoint& b) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double squared = dx * dx + dy * dy;
    const double share =
        squared > 0.0 ? std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / squared, 0.0, 1.0) : 0.0;
    return Distance(p, {a.x + share * dx, a.y + share * dy});
}

/// Keeps what is farthest off the straight line, and so on on both sides of it.
void Keep(std::span<const ArtPoint> points, std::size_t first, std::size_t last, double tolerance,
          std::vector<bool>& isKept) {
    std::vector<std::pair<std::size_t, std::size_t>> open{{first, last}};
    while (!open.empty()) {
        const auto [from, to] = open.back();
        open.pop_back();
        double most = tolerance;
        std::size_t farthest = from;
        for (std::size_t i = from + 1; i < to; ++i) {
            const double distance = DistanceToSegment(points[i], points[from], points[to]);
            if (distance <= most) continue;
            most = distance;
            farthest = i;
        }
        if (farthest == from) continue;
        isKept[farthest] = true;
        open.insert(open.end(), {{from, farthest}, {farthest, to}});
    }
}

}  // namespace

ArtPath::ArtPath(std::vector<ArtPoint> points)
    : m_points(std::move(points)), m_lengths(m_points.size(), 0.0) {
    for (std::size_t i = 1; i < m_points.size(); ++i)
        m_lengths[i] = m_lengths[i - 1] + Distance(m_points[i - 1], m_points[i]);
}

std::size_t ArtPath::StepAt(double length) const {
    const auto next = std::upper_bound(m_lengths.begin() + 1, m_lengths.end() - 1, length);
    return static_cast<std::size_t>(next - m_lengths.begin()) - 1;
}

ArtPoint ArtPath::At(double length) const {
    const std::size_t i = StepAt(length);
    const double step = m_lengths[i + 1] - m_lengths[i];
    const double share = step > 0.0 ? (length - m_lengths[i]) / step : 0.0;
    return {m_points[i].x + share * (m_points[i + 1].x - m_points[i].x),
            m_points[i].y + share * (m_points[i + 1].y - m_points[i].y)};
}

ArtPoint ArtPath::DirectionAt(double length) const {
    const std::size_t i = StepAt(length);
    const double step = m_lengths[i + 1] - m_lengths[i];
    if (step <= 0.0) return {};
    return {(m_points[i + 1].x - m_points[i].x) / step, (m_points[i + 1].y - m_points[i].y) / step};
}

std::vector<ArtPoint> ArtPath::Cut(double from, double to) const {
    if (from <= 0.0 && to >= Length()) return m_points;
    std::vector<ArtPoint> points{At(from)};
    for (std::size_t i = 1; i + 1 < m_points.size(); ++i) {
        if (m_lengths[i] > from && m_lengths[i] < to) points.push_back(m_points[i]);
    }
    points.push_back(At(to));
    return points;
}

std::vector<ArtPoint> Simplified(std::span<const ArtPoint> points, double tolerance) {
    const std::size_t last = points.size() - 1;
    std::vector<bool> isKept(points.size(), false);
    isKept.front() = isKept.back() = true;
    if (last > 2 && points.front() == points.back()) {
        const auto far = std::max_element(points.begin(), points.end(), [&](const auto& a, const auto& b) {
            return Distance(points.front(), a) < Distance(points.front(), b);
        });
        const auto middle = static_cast<std::size_t>(far - points.begin());
        isKept[middle] = true;
        Keep(points, 0, middle, tolerance, isKept);
        Keep(points, middle, last, tolerance, isKept);
    } else {
        Keep(points, 0, last, tolerance, isKept);
    }
    std::vector<ArtPoint> kept;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (isKept[i]) kept.push_back(points[i]);
    }
    return kept;
}

}  // namespace zrsheet
