#include "app/sample/Housing.h"

#include <cmath>
#include <numbers>
#include <vector>

#include "app/sample/ColumnSolid.h"

namespace zrsheet {
namespace {

constexpr double kFar = 1000;
constexpr double kPlugHole = 10;    // radius
constexpr double kBoltHole = 5.5;   // radius
constexpr double kDowelHole = 4.1;  // radius
constexpr double kScrewHole = 3.4;  // radius
constexpr double kRibHalf = 5;
constexpr double kOuterHalf = 62;  // walls, in y
constexpr double kInnerHalf = 52;
constexpr double kRibEnd = 77.5;  // past the bolt holes
constexpr double kBottom = -120;
constexpr PlanBox kFlange{{-164, -kHousingHalfWidth}, {262, kHousingHalfWidth}};
constexpr PlanBox kWalls{{-144, -kOuterHalf}, {kEndWall, kOuterHalf}};
constexpr PlanBox kInside{{-134, -kInnerHalf}, {232, kInnerHalf}};
constexpr PlanBox kOpening{{76, -30}, {184, 30}};
constexpr Point2 kSlope{-100, 40};  // the hood rises between these x
constexpr double kLowRoof = 70;

Height Flat(double z) {
    return [z](const Point2&) { return z; };
}

// Half the chord of a circle at the distance `offset` from its centre.
double HalfChord(double radius, double offset) {
    return std::sqrt(std::max(0.0, radius * radius - offset * offset));
}

// The surface of a cylinder along y that lies in z = 0: its upper half, or with `sign` -1 its lower half.
Height Cylinder(double x, double radius, double sign) {
    return [=](const Point2& at) { return sign * HalfChord(radius, at[0] - x); };
}

// Lines that divide a circle into chords of equal angles.
void AppendCircleLines(std::vector<double>& lines, double centre, double radius, int chords) {
    for (int i = 0; i <= chords; ++i)
        lines.push_back(centre + radius * std::cos(std::numbers::pi * i / chords));
}

std::vector<double> PlanXs() {
    constexpr int kChords = 18;
    std::vector<double> xs{
        kFlange.low[0],  kFlange.high[0],  kWalls.low[0], kWalls.high[0], kInside.low[0], kInside.high[0],
        kOpening.low[0], kOpening.high[0], kSlope[0],     kSlope[1],      -120,           190};
    for (const auto& [x, bore, boss] : kShaftSeats) {
        AppendCircleLines(xs, x, bore, kChords);
        AppendCircleLines(xs, x, boss, kChords);
        for (const double side : {-1.0, 1.0}) {
            xs.push_back(x + side * kRibHalf);
            xs.push_back(x + side * HalfChord(boss, kFlangeHeight));  // where the boss meets the flange
        }
    }
    return xs;
}

std::vector<double> PlanYs() {
    std::vector<double> ys{0};
    for (const double y : {kHousingHalfWidth, kOuterHalf, kInnerHalf, kRibEnd}) ys.insert(ys.end(), {-y, y});
    return ys;
}

PlanBox SideOf(double side, double low, double high, double x, double half) {
    return side > 0 ? PlanBox{{x - half, low}, {x + half, high}}
                    : PlanBox{{x - half, -high}, {x + half, -low}};
}

// Bosses and their ribs, on both sides; `sign` says which half of the housing.
void AddSeats(ColumnSolid& solid, double sign, const std::array<double, 3>& ribEnds) {
    for (std::size_t i = 0; i < kShaftSeats.size(); ++i) {
        const auto& [x, bore, boss] = kShaftSeats[i];
        const double ribStart = sign * (bore + 4);
        for (const double side : {-1.0, 1.0}) {
            const PlanBox bossBox = SideOf(side, kOuterHalf, kHousingHalfWidth, x, boss);
            const PlanBox ribBox = SideOf(side, kOuterHalf, kRibEnd, x, kRibHalf);
            if (sign > 0) {
                solid.Add(bossBox, Flat(0), Cylinder(x, boss, 1));
                solid.Add(ribBox, Flat(ribStart), Flat(ribEnds[i]));
            } else {
                solid.Add(bossBox, Cylinder(x, boss, -1), Flat(0));
                solid.Add(ribBox, Flat(ribEnds[i]), Flat(ribStart));
            }
        }
    }
}

void CutSeats(ColumnSolid& solid) {
    for (const auto& [x, bore, boss] : kShaftSeats) {
        solid.Cut({{x - bore, -kFar}, {x + bore, kFar}}, Cylinder(x, bore, -1), Cylinder(x, bore, 1));
    }
}

void DrillFlange(ColumnSolid& solid) {
    for (const Point2& bolt : kFlangeBolts) solid.Drill(bolt, kBoltHole);
    for (const Point2& dowel : kDowels) solid.Drill(dowel, kDowelHole);
}

double RoofAt(const Point2& at) {
    const double share = std::clamp((at[0] - kSlope[0]) / (kSlope[1] - kSlope[0]), 0.0, 1.0);
    return kLowRoof + share * (kRoof - kLowRoof);
}

}  // namespace

SolidMesh MakeLowerHousing() {
    constexpr int kPlugChords = 12;
    constexpr double kFloor = -112;
    constexpr double kFeet = -132;
    std::vector<double> ys = PlanYs();
    AppendCircleLines(ys, 0, kPlugHole, kPlugChords);
    ColumnSolid solid(PlanXs(), ys);
    solid.Add(kFlange, Flat(-kFlangeHeight), Flat(0));
    solid.Add(kWalls, Flat(kBottom), Flat(0));
    solid.Add({{kFlange.low[0], -kHousingHalfWidth}, {-120, kHousingHalfWidth}}, Flat(kFeet),
              Flat(kBottom + 4));
    solid.Add({{190, -kHousingHalfWidth}, {kFlange.high[0], kHousingHalfWidth}}, Flat(kFeet),
              Flat(kBottom + 4));
    AddSeats(solid, -1, {kBottom, kBottom, kBottom});
    solid.Cut(kInside, Flat(kFloor), Flat(kFar));
    CutSeats(solid);
    for (const double z : {kDrainHeight, kSightHeight}) {
        solid.Cut(
            {{kInside.high[0], -kPlugHole}, {kEndWall, kPlugHole}},
            [z](const Point2& at) { return z - HalfChord(kPlugHole, at[1]); },
            [z](const Point2& at) { return z + HalfChord(kPlugHole, at[1]); });
    }
    DrillFlange(solid);
    return solid.Build();
}

SolidMesh MakeUpperHousing() {
    constexpr double kThickness = 10;
    std::vector<double> ys = PlanYs();
    ys.insert(ys.end(), {kOpening.low[1], kOpening.high[1]});
    ColumnSolid solid(PlanXs(), ys);
    solid.Add(kFlange, Flat(0), Flat(kFlangeHeight));
    solid.Add(kWalls, Flat(0), RoofAt);
    AddSeats(solid, 1, {60, 90, 105});
    solid.Cut(kInside, Flat(-kFar), [](const Point2& at) { return RoofAt(at) - kThickness; });
    solid.Cut(kOpening, Flat(kRoof - 2 * kThickness), Flat(kFar));
    CutSeats(solid);
    DrillFlange(solid);
    for (const Point2& screw : kCoverScrews) solid.Drill(screw, kScrewHole);
    return solid.Build();
}

}  // namespace zrsheet
