#include "app/sample/Contour.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zrsheet {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr int kCircleCorners = 48;

Point2 Polar(double radius, double angle) { return {radius * std::cos(angle), radius * std::sin(angle)}; }

// The corners of a circle outside the slot, from its upper edge round to its lower edge.
Contour OutsideSlot(double radius, double width) {
    const double edge = std::asin(width / 2 / radius);
    Contour arc;
    for (int i = 0; i <= kCircleCorners; ++i) {
        arc.push_back(Polar(radius, edge + (2 * kPi - 2 * edge) * i / kCircleCorners));
    }
    return arc;
}

double Involute(double angle) { return std::tan(angle) - angle; }

}  // namespace

Contour Circle(double radius, int corners, Point2 centre) {
    Contour circle;
    for (int i = 0; i < corners; ++i) {
        const Point2 point = Polar(radius, 2 * kPi * i / corners);
        circle.push_back({centre[0] + point[0], centre[1] + point[1]});
    }
    return circle;
}

Contour Rectangle(Point2 low, Point2 high) { return {low, {high[0], low[1]}, high, {low[0], high[1]}}; }

Contour RoundedRectangle(Point2 low, Point2 high, double radius) {
    constexpr int kSteps = 6;
    const std::array<Point2, 4> centres{Point2{high[0] - radius, high[1] - radius},
                                        {low[0] + radius, high[1] - radius},
                                        {low[0] + radius, low[1] + radius},
                                        {high[0] - radius, low[1] + radius}};
    Contour contour;
    for (std::size_t corner = 0; corner < centres.size(); ++corner) {
        for (int i = 0; i <= kSteps; ++i) {
            const Point2 point = Polar(radius, kPi / 2 * (static_cast<double>(corner) + i / double{kSteps}));
            contour.push_back({centres[corner][0] + point[0], centres[corner][1] + point[1]});
        }
    }
    return contour;
}

Contour Hexagon(double acrossFlats) { return Circle(acrossFlats / std::sqrt(3.0), 6); }

Contour KeyedCircle(double radius, double width, double floor) {
    Contour contour = OutsideSlot(radius, width);
    contour.push_back({floor, -width / 2});
    contour.push_back({floor, width / 2});
    return contour;
}

Contour UnkeyedCircle(double radius, double width) {
    constexpr int kSteps = 4;
    const double edge = std::asin(width / 2 / radius);
    Contour contour = OutsideSlot(radius, width);
    for (int i = 1; i < kSteps; ++i) contour.push_back(Polar(radius, -edge + 2 * edge * i / kSteps));
    return contour;
}

Contour Gear(int teeth, double module) {
    constexpr double kPressureAngle = 20 * kPi / 180;
    constexpr int kFlankSteps = 4;
    const double pitch = teeth * module / 2;
    const double base = pitch * std::cos(kPressureAngle);
    const double root = pitch - 1.25 * module;
    const double tip = pitch + module;
    const double start = std::max(base, root);
    // Half the tooth's angle at the distance `radius` from the gear's axis.
    const auto halfAngle = [&](double radius) {
        return kPi / 2 / teeth + Involute(kPressureAngle) - Involute(std::acos(std::min(1.0, base / radius)));
    };
    Contour half;  // upper flank, from root to tip, as radius and angle
    if (root < base) half.push_back({root, halfAngle(base)});
    for (int i = 0; i <= kFlankSteps; ++i) {
        const double radius = start + (tip - start) * i / kFlankSteps;
        half.push_back({radius, halfAngle(radius)});
    }
    Contour gear;
    for (int tooth = 0; tooth < teeth; ++tooth) {
        const double middle = 2 * kPi * tooth / teeth;
        for (const auto& [radius, angle] : half) gear.push_back(Polar(radius, middle - angle));
        for (auto point = half.rbegin(); point != half.rend(); ++point) {
            gear.push_back(Polar((*point)[0], middle + (*point)[1]));
        }
    }
    return gear;
}

Contour Hole(Contour contour) {
    std::ranges::reverse(contour);
    return contour;
}

Region HolesOnCircle(double circleRadius, double holeRadius, int holes, double startAngle) {
    constexpr int kHoleCorners = 20;
    Region region;
    for (int i = 0; i < holes; ++i) {
        const Point2 centre = Polar(circleRadius, startAngle + 2 * kPi * i / holes);
        region.push_back(Hole(Circle(holeRadius, kHoleCorners, centre)));
    }
    return region;
}

Region Join(Region region, const Region& more) {
    region.insert(region.end(), more.begin(), more.end());
    return region;
}

double DoubleArea(const Contour& contour) {
    double area = 0;
    for (std::size_t i = 0; i < contour.size(); ++i) {
        const Point2& a = contour[i];
        const Point2& b = contour[(i + 1) % contour.size()];
        area += a[0] * b[1] - a[1] * b[0];
    }
    return area;
}

bool IsInside(const Contour& contour, const Point2& point) {
    bool inside = false;
    for (std::size_t i = 0; i < contour.size(); ++i) {
        const Point2& a = contour[i];
        const Point2& b = contour[(i + 1) % contour.size()];
        if ((a[1] > point[1]) == (b[1] > point[1])) continue;
        const double crossing = a[0] + (point[1] - a[1]) / (b[1] - a[1]) * (b[0] - a[0]);
        if (crossing > point[0]) inside = !inside;
    }
    return inside;
}

}  // namespace zrsheet
