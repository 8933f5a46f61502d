#include "app/lineart/CurveSmoothing.h"

#include <cmath>
#include <numbers>

namespace zrsheet {
namespace {

// Pieces of one arc are about equally long. Beside a piece longer by this a curve begins, and the long piece
// is straight.
constexpr double kSameArc = 2.5;

/// The tangent at the other end of an arc over the chord.
dg::DVec3 Mirrored(const dg::DVec3& tangent, const dg::DVec3& chord) {
    return chord * (2.0 * chord.Dot(tangent)) - tangent;
}

}  // namespace

CurveSmoothing::CurveSmoothing(std::span<const dg::DPoint3D> points, double creaseAngle)
    : m_points(points.begin(), points.end()),
      m_creaseCosine(std::cos(creaseAngle * std::numbers::pi / 180.0)) {
    const std::size_t steps = m_points.size() - 1;
    m_tangents.resize(steps);  // of length 0: not bent there
    for (std::size_t i = 1; i < steps; ++i) Bend(i - 1, i);
    if (steps > 2 && m_points.front() == m_points.back()) Bend(steps - 1, 0);
    for (std::size_t i = 0; i < steps; ++i) {
        Tangents& tangents = m_tangents[i];
        const dg::DVec3 chord = (m_points[i + 1] - m_points[i]).Normalized();
        const bool hasStart = tangents.start != dg::DVec3();
        const bool hasEnd = tangents.end != dg::DVec3();
        if (!hasStart) tangents.start = hasEnd ? Mirrored(tangents.end, chord) : chord;
        if (!hasEnd) tangents.end = hasStart ? Mirrored(tangents.start, chord) : chord;
    }
}

// The tangent of the circle through three points in the middle one.
void CurveSmoothing::Bend(std::size_t before, std::size_t after) {
    const dg::DVec3 in = m_points[before + 1] - m_points[before];
    const dg::DVec3 out = m_points[after + 1] - m_points[after];
    const double inLength = in.Length();
    const double outLength = out.Length();
    if (in.Dot(out) < m_creaseCosine * inLength * outLength || inLength <= 0.0 || outLength <= 0.0) return;
    dg::DVec3 tangent;
    if (inLength > kSameArc * outLength) {
        tangent = in * (1.0 / inLength);
    } else if (outLength > kSameArc * inLength) {
        tangent = out * (1.0 / outLength);
    } else {
        tangent = (in * (outLength / inLength) + out * (inLength / outLength)).Normalized();
    }
    m_tangents[before].end = tangent;
    m_tangents[after].start = tangent;
}

double CurveSmoothing::Bulge(std::size_t step) const {
    const dg::DVec3 chord = m_points[step + 1] - m_points[step];
    return (At(step, 0.5) - (m_points[step] + chord * 0.5)).Length();
}

// Hermite's cubic.
dg::DPoint3D CurveSmoothing::At(std::size_t step, double t) const {
    const dg::DVec3 chord = m_points[step + 1] - m_points[step];
    const double length = chord.Length();
    const double blend = t * t * (3.0 - 2.0 * t);
    const double rise = t * (1.0 - t) * (1.0 - t);
    const double fall = t * t * (t - 1.0);
    return m_points[step] + chord * blend + m_tangents[step].start * (rise * length) +
           m_tangents[step].end * (fall * length);
}

}  // namespace zrsheet
