#include "app/lineart/CurveSight.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace zrsheet {
namespace {

// In pixels.
constexpr double kStep = 1.2;        // between the samples along a curve
constexpr double kExact = 0.01;      // of places where the answer changes
constexpr double kSnap = 0.06;       // a change so near a corner is at the corner
constexpr double kLeastPiece = 0.9;  // seen or covered for less: a crack between facets
constexpr double kLeastKind = 4.0;   // a line does not change its weight for less
constexpr double kBeside = 1.0;      // how far off a contour stands what lies behind it
constexpr double kMargin = 4.0;      // around the viewport
// Shares of the part's and of the scene's extent that may cover a line without hiding it.
constexpr double kPartBias = 2e-4;
constexpr double kSceneBias = 4e-6;
// The same in slacks of the curve: of a pin and its hole now the one is outside, now the other.
constexpr double kSlackBias = 4.0;

struct Knot {
    dg::DPoint3D place;
    dg::DVec3 lift;
    ArtPoint pixel;
};

/// The shares of the way from `a` to `b` inside the box around the viewport; none: first > second.
std::pair<double, double> InsideOf(const dg::Camera3D& camera, const ArtPoint& a, const ArtPoint& b) {
    std::pair<double, double> inside{0.0, 1.0};
    const auto cut = [&inside](double from, double to, double size) {
        for (const auto& [start, end] : {std::pair(from + kMargin, to + kMargin),
                                         std::pair(size + kMargin - from, size + kMargin - to)}) {
            if (start < 0.0 && end < 0.0) inside = {1.0, 0.0};
            if (start < 0.0 && end >= 0.0) inside.first = std::max(inside.first, start / (start - end));
            if (start >= 0.0 && end < 0.0) inside.second = std::min(inside.second, start / (start - end));
        }
    };
    cut(a.x, b.x, camera.GetViewportWidth());
    cut(a.y, b.y, camera.GetViewportHeight());
    return inside;
}

}  // namespace

/// A part of a curve that lies in the viewport, measured along its picture.
class CurveSight::Track {
public:
    explicit Track(const Curve& curve) : m_curve(&curve) {}

    void Add(const Knot& from, const Knot& to, const CurveStep& step) {
        if (m_knots.empty()) Push(from, 0.0);
        const double length =
            std::hypot(to.pixel.x - m_knots.back().pixel.x, to.pixel.y - m_knots.back().pixel.y);
        Push(to, m_lengths.back() + length);
        m_steps.push_back(&step);
    }

    const Curve& GetCurve() const { return *m_curve; }
    bool IsEmpty() const { return m_knots.empty(); }
    bool IsClosed() const { return m_knots.size() > 3 && m_knots.front().pixel == m_knots.back().pixel; }
    double Length() const { return m_lengths.back(); }
    const std::vector<double>& Corners() const { return m_lengths; }
    const ArtPoint& Corner(std::size_t i) const { return m_knots[i].pixel; }

    std::size_t StepAt(double at) const {
        const auto next = std::upper_bound(m_lengths.begin() + 1, m_lengths.end() - 1, at);
        return static_cast<std::size_t>(next - m_lengths.begin()) - 1;
    }
    Knot At(double at) const {
        const std::size_t i = StepAt(at);
        const double length = m_lengths[i + 1] - m_lengths[i];
        const double share = length > 0.0 ? (at - m_lengths[i]) / length : 0.0;
        const Knot& a = m_knots[i];
        const Knot& b = m_knots[i + 1];
        return {a.place + (b.place - a.place) * share,
                a.lift + (b.lift - a.lift) * share,
                {a.pixel.x + share * (b.pixel.x - a.pixel.x), a.pixel.y + share * (b.pixel.y - a.pixel.y)}};
    }
    const CurveStep& Step(std::size_t i) const { return *m_steps[i]; }

    std::vector<ArtPoint> Cut(double from, double to) const {
        std::vector<ArtPoint> points{At(from).pixel};
        for (std::size_t i = 1; i + 1 < m_knots.size(); ++i) {
            if (m_lengths[i] > from && m_lengths[i] < to) points.push_back(m_knots[i].pixel);
        }
        points.push_back(At(to).pixel);
        return points;
    }

private:
    void Push(const Knot& knot, double length) {
        m_knots.push_back(knot);
        m_lengths.push_back(length);
    }

    const Curve* m_curve;
    std::vector<Knot> m_knots;
    std::vector<double> m_lengths;  // up to each knot
    std::vector<const CurveStep*> m_steps;
};

void CurveSight::Look(const Curve& curve, double partSize, bool withHidden,
                      std::vector<SeenPiece>& pieces) const {
    const double bias = std::max({kPartBias * partSize, kSceneBias * m_size, kSlackBias * curve.slack});
    for (const Track& track : TracksOf(curve)) {
        for (const Span& span : SpansOf(track, bias)) {
            if (span.kind == LineKind::Hidden && !withHidden) continue;
            const double slack = curve.slack / m_viewer.PixelSize(curve.points.front().place);
            pieces.push_back({span.kind, curve.placement, track.Cut(span.from, span.to), slack});
        }
    }
}

std::vector<CurveSight::Track> CurveSight::TracksOf(const Curve& curve) const {
    std::vector<Track> tracks;
    Track open(curve);
    const auto close = [&] {
        if (!open.IsEmpty()) tracks.push_back(std::exchange(open, Track(curve)));
    };
    for (std::size_t i = 0; i < curve.steps.size(); ++i) {
        CurvePoint a = curve.points[i];
        CurvePoint b = curve.points[i + 1];
        const bool isBefore = !m_viewer.ClipNear(a.place, b.place) || !m_viewer.ClipNear(a.drawn, b.drawn);
        const dg::DPoint3D pixelA = m_viewer.ToPixel(a.drawn);
        const dg::DPoint3D pixelB = m_viewer.ToPixel(b.drawn);
        const ArtPoint from{pixelA.x, pixelA.y};
        const ArtPoint to{pixelB.x, pixelB.y};
        const auto [first, last] = InsideOf(m_viewer.Camera(), from, to);
        if (isBefore || first > last) {
            close();
            continue;
        }
        const auto knot = [&](double share) {
            return Knot{a.place + (b.place - a.place) * share,
                        a.lift + (b.lift - a.lift) * share,
                        {from.x + share * (to.x - from.x), from.y + share * (to.y - from.y)}};
        };
        if (first > 0.0) close();
        open.Add(knot(first), knot(last), curve.steps[i]);
        if (last < 1.0) close();
    }
    close();
    return tracks;
}

std::vector<CurveSight::Span> CurveSight::SpansOf(const Track& track, double bias) const {
    const double length = track.Length();
    const auto samples = std::max<std::size_t>(static_cast<std::size_t>(std::ceil(length / kStep)), 1);
    const double step = length / static_cast<double>(samples);
    std::vector<Span> spans{{0.0, length, KindAt(track, 0.5 * step, bias)}};
    for (std::size_t i = 1; i < samples; ++i) {
        const double at = (static_cast<double>(i) + 0.5) * step;
        const LineKind kind = KindAt(track, at, bias);
        if (kind == spans.back().kind) continue;
        const double change = Switch(track, at - step, at, spans.back().kind, bias);
        spans.back().to = change;
        spans.push_back({change, length, kind});
    }
    // What is too short becomes what was before it; at the beginning, what follows. Where a closed curve
    // begins nothing ends.
    const auto settle = [&](double least, auto mayJoin) {
        const bool isRound = track.IsClosed() && spans.front().kind == spans.back().kind;
        std::vector<Span> settled;
        for (std::size_t i = 0; i < spans.size(); ++i) {
            Span span = spans[i];
            double lasts = span.to - span.from;
            if (isRound && (i == 0 || i + 1 == spans.size()))
                lasts = spans.front().to + length - spans.back().from;
            const bool isShort = lasts < least;
            if (isShort && settled.empty() && i + 1 < spans.size() && mayJoin(span.kind, spans[i + 1].kind))
                span.kind = spans[i + 1].kind;
            const bool isSame = !settled.empty() && settled.back().kind == span.kind;
            if (isSame || (isShort && !settled.empty() && mayJoin(settled.back().kind, span.kind))) {
                settled.back().to = span.to;
            } else {
                settled.push_back(span);
            }
        }
        spans = std::move(settled);
    };
    settle(kLeastPiece, [](LineKind, LineKind) { return true; });
    settle(kLeastKind, [](LineKind a, LineKind b) { return a != LineKind::Hidden && b != LineKind::Hidden; });
    return spans;
}

LineKind CurveSight::KindAt(const Track& track, double at, double bias) const {
    const CurveStep& step = track.Step(track.StepAt(at));
    if (step.isTurnedAway) return LineKind::Hidden;
    const Knot knot = track.At(at);
    const dg::DPoint3D point = knot.place + knot.lift;
    if (IsCovered(point, bias)) return LineKind::Hidden;
    if (track.GetCurve().isCrossing) return LineKind::Crossing;
    if (!step.isContour || IsAgainstItself(track, point, step.away)) return LineKind::Edge;
    return LineKind::Outline;
}

double CurveSight::Switch(const Track& track, double from, double to, LineKind kind, double bias) const {
    while (to - from > kExact) {
        const double middle = 0.5 * (from + to);
        (KindAt(track, middle, bias) == kind ? from : to) = middle;
    }
    const double change = 0.5 * (from + to);
    const auto& corners = track.Corners();
    const auto next = std::lower_bound(corners.begin(), corners.end(), change);
    if (next != corners.end() && *next - change < kSnap) return *next;
    if (next != corners.begin() && change - *(next - 1) < kSnap) return *(next - 1);
    return change;
}

bool CurveSight::IsCovered(const dg::DPoint3D& point, double bias) const {
    const double room = m_viewer.RoomBefore(point);
    return room > bias && m_scene.IsBlocked({point, m_viewer.TowardsEye(point)}, bias, room);
}

bool CurveSight::IsAgainstItself(const Track& track, const dg::DPoint3D& point, const dg::DVec3& away) const {
    const dg::DPoint3D here = m_viewer.ToPixel(point);
    const dg::DPoint3D there = m_viewer.ToPixel(point + away * m_viewer.PixelSize(point));
    const double length = std::hypot(there.x - here.x, there.y - here.y);
    if (length <= 0.0) return false;
    const double share = kBeside / length;
    const zrg::RayHit hit = m_scene.Nearest(
        m_viewer.Camera().PixelRay(here.x + share * (there.x - here.x), here.y + share * (there.y - here.y)));
    return hit && hit.placement == track.GetCurve().placement;
}

}  // namespace zrsheet
