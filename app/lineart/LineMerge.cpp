#include "app/lineart/LineMerge.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <utility>

#include "app/lineart/ArtPath.h"
#include "app/lineart/ChainBuilder.h"

namespace zrsheet {
namespace {

// In pixels.
constexpr double kSame = 0.5;           // lines nearer to each other are one
constexpr double kStep = 0.7;           // between the places where that is asked
constexpr double kLeastGap = 1.5;       // lines that are one for less only meet
constexpr double kLeastRest = 1.0;      // what is left of a line for less is not drawn
constexpr double kLeastCrossing = 4.0;  // facets of surfaces that nearly coincide cross for less, by chance
constexpr double kTolerance = 0.04;     // of simplified lines
constexpr double kMostSlack = 1.5;      // more is added to the former for lines of coarse curves
constexpr double kCell = 4.0;
constexpr double kGrain = 256.0;  // ends meet that agree to so many parts of a pixel
// Sine of the angle below which lines run the same way.
constexpr double kParallel = 0.2;
// Square pixels of surface to a pixel of line: with less, lines have a share of their width.
constexpr double kRoomySurface = 6.0;

/// The lines drawn so far, to be found by place.
class DrawnLines {
public:
    void Add(const SeenPiece& piece) {
        const std::vector<ArtPoint>& points = piece.points;
        const double reach = kSame + std::min(piece.slack, kMostSlack);
        for (std::size_t i = 0; i + 1 < points.size(); ++i) {
            const ArtPoint& a = points[i];
            const ArtPoint& b = points[i + 1];
            const auto number = static_cast<std::uint32_t>(m_segments.size());
            m_segments.push_back({a, b, reach, piece.placement});
            const int steps = static_cast<int>(Distance(a, b)) + 1;
            for (int k = 0; k <= steps; ++k) {
                const double share = static_cast<double>(k) / steps;
                auto& cell = m_cells[CellOf(a.x + share * (b.x - a.x), a.y + share * (b.y - a.y))];
                if (cell.empty() || cell.back() != number) cell.push_back(number);
            }
        }
    }

    bool HasAt(const ArtPoint& point, const ArtPoint& direction, std::uint32_t placement) const {
        std::uint64_t former = ~0ULL;
        for (const double dx : {-kSame - kMostSlack, kSame + kMostSlack}) {
            for (const double dy : {-kSame - kMostSlack, kSame + kMostSlack}) {
                const std::uint64_t number = CellOf(point.x + dx, point.y + dy);
                if (number == std::exchange(former, number)) continue;
                const auto cell = m_cells.find(number);
                if (cell == m_cells.end()) continue;
                for (const std::uint32_t segment : cell->second) {
                    if (IsOn(m_segments[segment], point, direction, placement)) return true;
                }
            }
        }
        return false;
    }

private:
    struct Segment {
        ArtPoint from;
        ArtPoint to;
        double reach = kSame;  // for the lines of other parts
        std::uint32_t placement = 0;
    };

    static std::uint64_t CellOf(double x, double y) {
        const auto part = [](double value) {
            return static_cast<std::uint64_t>(static_cast<std::int64_t>(std::floor(value / kCell))) &
                   0xFFFFFFFFULL;
        };
        return part(x) << 32U | part(y);
    }

    static bool IsOn(const Segment& segment, const ArtPoint& point, const ArtPoint& direction,
                     std::uint32_t placement) {
        const auto& [a, b, reachOfOthers, owner] = segment;
        const double reach = owner == placement ? kSame : reachOfOthers;
        const double dx = b.x - a.x;
        const double dy = b.y - a.y;
        const double length = Distance(a, b);
        if (length <= 0.0 || std::abs(direction.x * dy - direction.y * dx) > kParallel * length) return false;
        const double along = ((point.x - a.x) * dx + (point.y - a.y) * dy) / length;
        const double across = ((point.x - a.x) * dy - (point.y - a.y) * dx) / length;
        return std::abs(across) < reach && along > -kSame && along < length + kSame;
    }

    std::vector<Segment> m_segments;
    std::unordered_map<std::uint64_t, std::vector<std::uint32_t>> m_cells;
};

/// From where to where a path is free of others.
std::vector<std::pair<double, double>> FreeSpans(const ArtPath& path, std::uint32_t placement,
                                                 const DrawnLines& drawn) {
    const double length = path.Length();
    const int samples = static_cast<int>(std::ceil(length / kStep));
    const double step = length / std::max(samples, 1);
    std::vector<std::pair<double, double>> spans;
    for (int i = 0; i < samples; ++i) {
        const double at = (i + 0.5) * step;
        if (drawn.HasAt(path.At(at), path.DirectionAt(at), placement)) continue;
        const bool goesOn = !spans.empty() && i * step - spans.back().second < kLeastGap;
        if (goesOn) {
            spans.back().second = (i + 1) * step;
        } else {
            spans.emplace_back(i * step < kLeastGap ? 0.0 : i * step, (i + 1) * step);
        }
    }
    if (!spans.empty() && length - spans.back().second < kLeastGap) spans.back().second = length;
    return spans;
}

/// The pieces of one kind and one fineness, joined where two ends meet.
class LineJoiner {
public:
    void Add(const SeenPiece& piece, std::uint8_t fineness) {
        m_links.push_back(
            {NodeOf(piece, fineness, piece.points.front()), NodeOf(piece, fineness, piece.points.back())});
        m_pieces.push_back(&piece);
        m_fineness.push_back(fineness);
    }

    std::vector<ArtLine> Lines() const {
        std::vector<ArtLine> lines;
        for (const LinkChain& chain : BuildChains(m_links)) {
            std::vector<ArtPoint> points;
            for (std::size_t i = 0; i < chain.links.size(); ++i) {
                std::vector<ArtPoint> next = m_pieces[chain.links[i]]->points;
                const bool isReversed = m_links[chain.links[i]].from != chain.nodes[i];
                if (isReversed) std::reverse(next.begin(), next.end());
                points.insert(points.end(), next.begin() + (points.empty() ? 0 : 1), next.end());
            }
            const LineKind kind = m_pieces[chain.links.front()]->kind;
            if (kind == LineKind::Crossing && ArtPath(points).Length() < kLeastCrossing) continue;
            const bool isClosed = chain.nodes.front() == chain.nodes.back() && points.size() > 3;
            if (isClosed) points.back() = points.front();
            points = Simplified(points, kTolerance);
            if (isClosed) points.pop_back();
            lines.push_back({kind, m_fineness[chain.links.front()], std::move(points), isClosed});
        }
        return lines;
    }

private:
    static std::uint64_t NodeOf(const SeenPiece& piece, std::uint8_t fineness, const ArtPoint& point) {
        const auto part = [](double value) {
            return static_cast<std::uint64_t>(std::llround(value * kGrain)) & 0xFFFFFFFULL;
        };
        return part(point.x) << 36U | part(point.y) << 8U | static_cast<std::uint64_t>(piece.kind) << 4U |
               fineness;
    }

    std::vector<ChainLink> m_links;
    std::vector<const SeenPiece*> m_pieces;
    std::vector<std::uint8_t> m_fineness;
};

std::vector<std::uint8_t> FinenessOf(std::span<const SeenPiece> pieces, std::span<const double> areas) {
    std::vector<double> lengths(areas.size(), 0.0);
    for (const SeenPiece& piece : pieces) {
        if (piece.kind != LineKind::Hidden) lengths[piece.placement] += ArtPath(piece.points).Length();
    }
    std::vector<std::uint8_t> fineness(areas.size(), 0);
    for (std::size_t i = 0; i < areas.size(); ++i) {
        const double share = areas[i] / (kRoomySurface * std::max(lengths[i], 1.0));
        while (fineness[i] + 1U < std::size(kLineShares) && share < kLineShares[fineness[i]]) ++fineness[i];
    }
    return fineness;
}

}  // namespace

std::vector<SeenPiece> WithoutDuplicates(std::vector<SeenPiece> pieces) {
    std::stable_sort(pieces.begin(), pieces.end(),
                     [](const SeenPiece& a, const SeenPiece& b) { return a.kind < b.kind; });
    DrawnLines drawn;
    std::vector<SeenPiece> kept;
    for (const SeenPiece& piece : pieces) {
        const ArtPath path(piece.points);
        const auto spans = FreeSpans(path, piece.placement, drawn);
        const std::size_t first = kept.size();
        for (const auto& [from, to] : spans) {
            if (to - from < kLeastRest && to - from < path.Length()) continue;
            kept.push_back({piece.kind, piece.placement, path.Cut(from, to), piece.slack});
        }
        for (std::size_t i = first; i < kept.size(); ++i) drawn.Add(kept[i]);
    }
    return kept;
}

std::vector<ArtLine> JoinedLines(std::span<const SeenPiece> pieces, std::span<const double> areas) {
    const std::vector<std::uint8_t> fineness = FinenessOf(pieces, areas);
    LineJoiner joiner;
    for (const SeenPiece& piece : pieces) joiner.Add(piece, fineness[piece.placement]);
    std::vector<ArtLine> lines = joiner.Lines();
    std::stable_sort(lines.begin(), lines.end(),
                     [](const ArtLine& a, const ArtLine& b) { return a.kind > b.kind; });
    return lines;
}

}  // namespace zrsheet
