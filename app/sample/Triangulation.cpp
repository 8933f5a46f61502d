#include "app/sample/Triangulation.h"

#include <algorithm>
#include <functional>
#include <limits>

namespace zrsheet {
namespace {

double Turn(const Point2& a, const Point2& b, const Point2& c) {
    return (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0]);
}

bool IsInTriangle(const Point2& a, const Point2& b, const Point2& c, const Point2& point) {
    return Turn(a, b, point) >= 0 && Turn(b, c, point) >= 0 && Turn(c, a, point) >= 0;
}

double DistanceSquared(const Point2& a, const Point2& b) {
    return (a[0] - b[0]) * (a[0] - b[0]) + (a[1] - b[1]) * (a[1] - b[1]);
}

bool Crosses(const Point2& a, const Point2& b, const Point2& c, const Point2& d) {
    if (a == c || a == d || b == c || b == d) return false;
    return (Turn(a, b, c) >= 0) != (Turn(a, b, d) >= 0) && (Turn(c, d, a) >= 0) != (Turn(c, d, b) >= 0);
}

bool IsFree(const Contour& contour, const Point2& from, const Point2& to) {
    for (std::size_t i = 0; i < contour.size(); ++i) {
        if (Crosses(from, to, contour[i], contour[(i + 1) % contour.size()])) return false;
    }
    return true;
}

// Looks from the corner into the material, not past it.
bool OpensTowards(const Contour& contour, std::size_t corner, const Point2& to) {
    const Point2& before = contour[(corner + contour.size() - 1) % contour.size()];
    const Point2& at = contour[corner];
    const Point2& after = contour[(corner + 1) % contour.size()];
    const bool leftOfIn = Turn(before, at, to) > 0;
    const bool leftOfOut = Turn(at, after, to) > 0;
    return Turn(before, at, after) > 0 ? leftOfIn && leftOfOut : leftOfIn || leftOfOut;
}

// Joins a hole to the outline by a bridge walked in both directions, from the hole's rightmost corner to the
// nearest corner of the outline that sees it.
void Bridge(Contour& outline, const Contour& hole) {
    const auto rightmost = std::ranges::max_element(hole);
    double nearest = std::numeric_limits<double>::infinity();
    std::size_t best = 0;
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const double distance = DistanceSquared(outline[i], *rightmost);
        if (distance >= nearest || outline[i][0] < (*rightmost)[0] || !OpensTowards(outline, i, *rightmost))
            continue;
        if (!IsFree(outline, *rightmost, outline[i])) continue;
        nearest = distance;
        best = i;
    }
    Contour bridge(rightmost, hole.end());
    bridge.insert(bridge.end(), hole.begin(), rightmost);
    bridge.push_back(*rightmost);
    bridge.push_back(outline[best]);
    outline.insert(outline.begin() + static_cast<std::ptrdiff_t>(best) + 1, bridge.begin(), bridge.end());
}

bool IsEar(const Contour& contour, std::size_t corner) {
    const std::size_t size = contour.size();
    const Point2& a = contour[(corner + size - 1) % size];
    const Point2& b = contour[corner];
    const Point2& c = contour[(corner + 1) % size];
    if (Turn(a, b, c) <= 0) return false;
    return std::ranges::none_of(contour, [&](const Point2& point) {
        return point != a && point != b && point != c && IsInTriangle(a, b, c, point);
    });
}

std::size_t NextEar(const Contour& contour, std::size_t from) {
    for (std::size_t i = 0; i < contour.size(); ++i) {
        const std::size_t corner = (from + i) % contour.size();
        if (IsEar(contour, corner)) return corner;
    }
    return from % contour.size();
}

}  // namespace

std::vector<std::array<Point2, 3>> Triangulate(const Region& region) {
    Contour outline = region.front();
    Region holes(region.begin() + 1, region.end());
    // From right to left: every bridge then finds the holes to its right already part of the outline.
    std::ranges::sort(holes, std::greater<>{},
                      [](const Contour& hole) { return *std::ranges::max_element(hole); });
    for (const Contour& hole : holes) Bridge(outline, hole);
    std::vector<std::array<Point2, 3>> triangles;
    std::size_t corner = 0;
    while (outline.size() >= 3) {
        corner = NextEar(outline, corner);
        const std::size_t size = outline.size();
        triangles.push_back(
            {outline[(corner + size - 1) % size], outline[corner], outline[(corner + 1) % size]});
        outline.erase(outline.begin() + static_cast<std::ptrdiff_t>(corner));
        ++corner;  // the next ear elsewhere: a fan from one corner makes slivers
    }
    return triangles;
}

}  // namespace zrsheet
