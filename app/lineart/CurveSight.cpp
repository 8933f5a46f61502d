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
struct Knot {
    dg::DPoint3D asked;  // where rays tell whether it is seen
    ArtPoint pixel;
};

/// The shares of the way from `a` to `b` inside the picture; none: first > second.
std::pair<double, double> InsideOf(const PixelBox& picture, const ArtPoint& a, const ArtPoint& b) {
    std::pair<double, double> inside{0.0, 1.0};
    const auto cut = [&inside](double from, double to, double low, double high) {
        for (const auto& [start, end] :
             {std::pair(from - low, to - low), std::pair(high - from, high - to)}) {
            if (start < 0.0 && end < 0.0) inside = {1.0, 0.0};
            if (start < 0.0 && end >= 0.0) inside.first = std::max(inside.first, start / (start - end));
            if (start >= 0.0 && end < 0.0) inside.second = std::min(inside.second, start / (start - end));
        }
    };
    cut(a.x, b.x, picture.left, picture.right);
    cut(a.y, b.y, picture.top, picture.bottom);
    return inside;
}

}  // namespace

/// A part of a curve that lies in the viewport, measured along its picture.
class CurveSight::Track {
public:
    explicit Track(const PlacedCurve& curve) : m_curve(&curve) {}

    void Reserve(std::size_t steps) {
        m_knots.reserve(steps + 1);
        m_lengths.reserve(steps + 1);
        m_steps.reserve(steps);
    }
    void Begin(const Knot& knot) {
        m_knots.push_back(knot);
        m_lengths.push_back(0.0);
    }
    void GoOn(const Knot& to, const CurveStep& step) {
        m_lengths.push_back(m_lengths.back() + Distance(m_knots.back().pixel, to.pixel));
        m_knots.push_back(to);
        m_steps.push_back(&step);
    }

    const PlacedCurve& GetCurve() const { return *m_curve; }
    bool IsEmpty() const { return m_knots.empty(); }
    bool IsClosed() const { return m_knots.size() > 3 && m_knots.front().pixel == m_knots.back().pixel; }
    double Length() const { return m_lengths.back(); }
    const std::vector<double>& Corners() const { return m_lengths; }

    std::size_t StepAt(double at) const {
        const auto next = std::upper_bound(m_lengths.begin() + 1, m_lengths.end() - 1, at);
        return static_cast<std::size_t>(next - m_lengths.begin()) - 1;
    }
    const CurveStep& Step(std::size_t i) const { return *m_steps[i]; }
    dg::DPoint3D AskedAt(std::size_t step, double at) const {
        const dg::DPoint3D& from = m_knots[step].asked;
        return from + (m_knots[step + 1].asked - from) * ShareOf(step, at);
    }

    std::vector<ArtPoint> Cut(double from, double to) const {
        std::vector<ArtPoint> points{PixelAt(from)};
        for (std::size_t i = 1; i + 1 < m_knots.size(); ++i) {
            if (m_lengths[i] > from && m_lengths[i] < to) points.push_back(m_knots[i].pixel);
        }
        points.push_back(PixelAt(to));
        return points;
    }

private:
    double ShareOf(std::size_t step, double at) const {
        const double length = m_lengths[step + 1] - m_lengths[step];
        return length > 0.0 ? (at - m_lengths[step]) / length : 0.0;
    }
    ArtPoint PixelAt(double at) const {
        const std::size_t i = StepAt(at);
        const double share = ShareOf(i, at);
        const ArtPoint& a = m_knots[i].pixel;
        const ArtPoint& b = m_knots[i + 1].pixel;
        return {a.x + share * (b.x - a.x), a.y + share * (b.y - a.y)};
    }

    const PlacedCurve* m_curve;
    std::vector<Knot> m_knots;
    std::vector<double> m_lengths;  // up to each knot
    std::vector<const CurveStep*> m_steps;
};

void CurveSight::Look(const PlacedCurve& curve, bool withHidden, std::vector<SeenPiece>& pieces) const {
    for (const Track& track : TracksOf(curve)) {
        for (const Span& span : SpansOf(track)) {
            if (span.kind == LineKind::Hidden && !withHidden) continue;
            const double slack =
                curve.curve->slack / m_viewer.PixelSize(curve.curve->points.front().place + curve.shift);
            pieces.push_back({span.kind, curve.placement, track.Cut(span.from, span.to), slack});
        }
    }
}

CurveSight::Track CurveSight::WholeTrack(const PlacedCurve& placed) const {
    const auto knot = [&](const CurvePoint& point) {
        const dg::DPoint3D pixel = m_viewer.ToPixel(point.drawn + placed.shift);
        return Knot{point.place + point.lift + placed.shift, {pixel.x, pixel.y}};
    };
    Track track(placed);
    track.Reserve(placed.curve->steps.size());
    track.Begin(knot(placed.curve->points.front()));
    for (std::size_t i = 0; i < placed.curve->steps.size(); ++i)
        track.GoOn(knot(placed.curve->points[i + 1]), placed.curve->steps[i]);
    return track;
}

std::vector<CurveSight::Track> CurveSight::TracksOf(const PlacedCurve& placed) const {
    const Curve& curve = *placed.curve;
    std::vector<Track> tracks;
    if (placed.isWhole) {
        tracks.push_back(WholeTrack(placed));
        return tracks;
    }
    Track open(placed);
    const auto close = [&] {
        if (!open.IsEmpty()) tracks.push_back(std::exchange(open, Track(placed)));
    };
    for (std::size_t i = 0; i < curve.steps.size(); ++i) {
        const auto asked = [&](const CurvePoint& point) { return point.place + point.lift + placed.shift; };
        dg::DPoint3D askedFrom = asked(curve.points[i]);
        dg::DPoint3D askedTo = asked(curve.points[i + 1]);
        dg::DPoint3D drawnFrom = curve.points[i].drawn + placed.shift;
        dg::DPoint3D drawnTo = curve.points[i + 1].drawn + placed.shift;
        const bool isBefore =
            !m_viewer.ClipNear(askedFrom, askedTo) || !m_viewer.ClipNear(drawnFrom, drawnTo);
        const dg::DPoint3D pixelFrom = m_viewer.ToPixel(drawnFrom);
        const dg::DPoint3D pixelTo = m_viewer.ToPixel(drawnTo);
        const ArtPoint from{pixelFrom.x, pixelFrom.y};
        const ArtPoint to{pixelTo.x, pixelTo.y};
        const auto [first, last] = InsideOf(m_viewer.Picture(), from, to);
        if (isBefore || first > last) {
            close();
            continue;
        }
        const auto knot = [&](double share) {
            return Knot{askedFrom + (askedTo - askedFrom) * share,
                        {from.x + share * (to.x - from.x), from.y + share * (to.y - from.y)}};
        };
        if (first > 0.0) close();
        if (open.IsEmpty()) open.Begin(knot(first));
        open.GoOn(knot(last), curve.steps[i]);
        if (last < 1.0) close();
    }
    close();
    return tracks;
}

std::vector<CurveSight::Span> CurveSight::SpansOf(const Track& track) const {
    const double length = track.Length();
    const auto samples = std::max<std::size_t>(static_cast<std::size_t>(std::ceil(length / kStep)), 1);
    const double step = length / static_cast<double>(samples);
    std::vector<Span> spans{{0.0, length, KindAt(track, 0.5 * step)}};
    for (std::size_t i = 1; i < samples; ++i) {
        const double at = (static_cast<double>(i) + 0.5) * step;
        const LineKind kind = KindAt(track, at);
        if (kind == spans.back().kind) continue;
        const double change = Switch(track, at - step, at, spans.back().kind);
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

LineKind CurveSight::KindAt(const Track& track, double at) const {
    const std::size_t number = track.StepAt(at);
    const CurveStep& step = track.Step(number);
    if (step.isTurnedAway) return LineKind::Hidden;
    const dg::DPoint3D point = track.AskedAt(number, at);
    if (IsCovered(point, track.GetCurve().bias)) return LineKind::Hidden;
    if (track.GetCurve().curve->isCrossing) return LineKind::Crossing;
    if (!step.isContour || IsAgainstItself(track, point, step.away)) return LineKind::Edge;
    return LineKind::Outline;
}

double CurveSight::Switch(const Track& track, double from, double to, LineKind kind) const {
    while (to - from > kExact) {
        const double middle = 0.5 * (from + to);
        (KindAt(track, middle) == kind ? from : to) = middle;
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
