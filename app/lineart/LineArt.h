// The line art of a picture as plain data: lines of different weight, and the area that each part shows.

#pragma once

#include <cmath>
#include <cstdint>
#include <vector>

namespace zrsheet {

/// Picture pixels: origin top left, y downwards.
struct ArtPoint {
    double x = 0.0;
    double y = 0.0;

    friend bool operator==(const ArtPoint&, const ArtPoint&) = default;
};

/// Not by std::hypot, whose care for the last bit costs more than all else here.
inline double Distance(const ArtPoint& a, const ArtPoint& b) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    return std::sqrt(dx * dx + dy * dy);
}

/// Where lines fall on each other the one further up is drawn.
enum class LineKind : std::uint8_t {
    Outline,   // the part against what is not the part
    Edge,      // between two faces of a part, or of a part against itself
    Crossing,  // where the surfaces of two parts run through each other
    Hidden,    // any of them, covered
};

/// Small parts have finer lines, or they would be nothing but black: the share of the full width by fineness.
inline constexpr double kLineShares[] = {1.0, 0.75, 0.55, 0.4};

struct ArtLine {
    LineKind kind = LineKind::Edge;
    std::uint8_t fineness = 0;  // index into kLineShares
    std::vector<ArtPoint> points;
    bool isClosed = false;  // the last point is joined to the first

    friend bool operator==(const ArtLine&, const ArtLine&) = default;
};

/// What is seen of one placement of the ray scene. Even-odd: rings in rings are holes.
struct VisibleArea {
    std::uint32_t placement = 0;
    std::vector<std::vector<ArtPoint>> rings;  // closed, without the first point once more

    friend bool operator==(const VisibleArea&, const VisibleArea&) = default;
};

struct LineArt {
    std::vector<ArtLine> lines;      // to be drawn in this order
    std::vector<VisibleArea> areas;  // by placement; those of which something is seen

    friend bool operator==(const LineArt&, const LineArt&) = default;
};

}  // namespace zrsheet
