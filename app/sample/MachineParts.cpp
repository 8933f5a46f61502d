#include "app/sample/MachineParts.h"

#include <cmath>
#include <numbers>

#include "app/sample/Contour.h"
#include "app/sample/Prism.h"

namespace zrsheet {
namespace {

constexpr int kRoundCorners = 48;
constexpr int kSmallCorners = 24;
constexpr double kClearance = 0.1;
constexpr double kKeyDepth = 4;   // into the shaft
constexpr double kKeyHeight = 7;  // of the key

Contour Outline(const ShaftStep& step, double radius) {
    if (step.keyWidth == 0) return Circle(radius, kRoundCorners);
    if (!step.isKeyed) return UnkeyedCircle(radius, step.keyWidth);
    return KeyedCircle(radius, step.keyWidth, radius - kKeyDepth);
}

// A groove that balls run in: an arc round the pitch circle, from the angle `from` to `to`.
void AppendGroove(Contour& profile, const BearingSize& size, double from, double to) {
    constexpr int kSteps = 10;
    for (int i = 0; i <= kSteps; ++i) {
        const double angle = from + (to - from) * i / kSteps;
        const double radius = size.ball + kClearance;
        profile.push_back({size.Pitch() + radius * std::cos(angle), radius * std::sin(angle)});
    }
}

// The rings' shoulders reach this near to the pitch circle.
double Shoulder(const BearingSize& size) { return size.ball * 0.65; }

// Half the angle under which the groove is seen from the balls' centre.
double GrooveAngle(const BearingSize& size) { return std::acos(Shoulder(size) / (size.ball + kClearance)); }

// A cylinder along z with a chamfer at its low end.
std::vector<Station> Shank(double radius, double length) {
    constexpr double kChamfer = 0.8;
    return {{-length, {Circle(radius - kChamfer, kSmallCorners)}},
            {-length + kChamfer, {Circle(radius, kSmallCorners)}},
            {0, {Circle(radius, kSmallCorners)}}};
}

void AppendLayer(std::vector<Station>& stations, double height, const Region& region) {
    const double z = stations.empty() ? 0 : stations.back().z;
    stations.push_back({z, region});
    stations.push_back({z + height, region});
}

}  // namespace

SolidMesh MakeShaft(double start, const std::vector<ShaftStep>& steps) {
    constexpr double kChamfer = 1;
    const auto chamfered = [](const ShaftStep& step) {
        return Region{Outline(step, step.radius - kChamfer)};
    };
    std::vector<Station> stations{{start, chamfered(steps.front())}};
    double z = start;
    for (const ShaftStep& step : steps) {
        const bool isFirst = &step == &steps.front();
        const bool isLast = &step == &steps.back();
        stations.push_back({z + (isFirst ? kChamfer : 0), {Outline(step, step.radius)}});
        z += step.length;
        stations.push_back({z - (isLast ? kChamfer : 0), {Outline(step, step.radius)}});
    }
    stations.push_back({z, chamfered(steps.back())});
    return BuildPrism(stations);
}

SolidMesh MakeKey(double width, double length) {
    const double half = width / 2 - kClearance;
    const Region section{Rectangle({0, -half}, {kKeyHeight, half})};
    return BuildPrism({{0, section}, {length, section}});
}

double KeySeat(double shaftRadius) { return shaftRadius - kKeyDepth + kClearance; }

SolidMesh MakeGear(int teeth, double module, double width, double boreRadius, double keyWidth) {
    constexpr double kRecess = 6;
    const double rim = teeth * module / 2 - 5 * module;
    const double hub = boreRadius + 14;
    const Contour outline = Gear(teeth, module);
    const Contour bore =
        Hole(KeyedCircle(boreRadius + kClearance, keyWidth, boreRadius + kKeyHeight - kKeyDepth + 0.3));
    const Region solid{outline, bore};
    if (rim < hub + 20) return BuildPrism({{-width / 2, solid}, {width / 2, solid}});
    const Region ends{outline, Hole(Circle(rim, kRoundCorners)), Circle(hub, kRoundCorners), bore};
    const Region web = Join(solid, HolesOnCircle((rim + hub) / 2, (rim - hub) / 4, 6, 0.3));
    return BuildPrism({{-width / 2, ends},
                       {-width / 2 + kRecess, ends},
                       {-width / 2 + kRecess, web},
                       {width / 2 - kRecess, web},
                       {width / 2 - kRecess, ends},
                       {width / 2, ends}});
}

SolidMesh MakeInnerRing(const BearingSize& size) {
    const double half = size.width / 2;
    const double shoulder = size.Pitch() - Shoulder(size);
    Contour profile{{size.bore, -half}, {shoulder, -half}};
    AppendGroove(profile, size, std::numbers::pi + GrooveAngle(size), std::numbers::pi - GrooveAngle(size));
    profile.insert(profile.end(), {{shoulder, half}, {size.bore, half}});
    return Revolve(profile, kRoundCorners);
}

SolidMesh MakeOuterRing(const BearingSize& size) {
    const double half = size.width / 2;
    const double shoulder = size.Pitch() + Shoulder(size);
    Contour profile{{shoulder, -half}, {size.outer, -half}, {size.outer, half}, {shoulder, half}};
    AppendGroove(profile, size, GrooveAngle(size), -GrooveAngle(size));
    return Revolve(profile, kRoundCorners);
}

SolidMesh MakeBall(double radius) {
    constexpr int kSteps = 12;
    Contour profile{{0, -radius}};
    for (int i = 1; i < kSteps; ++i) {
        const double angle = std::numbers::pi * (static_cast<double>(i) / kSteps - 0.5);
        profile.push_back({radius * std::cos(angle), radius * std::sin(angle)});
    }
    profile.push_back({0, radius});
    return Revolve(profile, 2 * kSteps);
}

SolidMesh MakeRing(double inner, double outer, double height) {
    return Revolve({{inner, 0}, {outer, 0}, {outer, height}, {inner, height}}, kRoundCorners);
}

SolidMesh MakeShaftSeal(double shaft, double outer, double height) {
    const double wall = (outer - shaft) * 0.3;
    return Revolve({{shaft + kClearance, 1},
                    {shaft + wall, 0},
                    {outer, 0},
                    {outer, height},
                    {outer - wall, height},
                    {outer - wall, height * 0.3},
                    {shaft + wall, height * 0.3},
                    {shaft + kClearance, height * 0.6}},
                   kRoundCorners);
}

SolidMesh MakeHexBolt(double radius, double length) {
    constexpr double kChamfer = 0.8;
    const double acrossFlats = radius * 3.3;
    const double height = radius * 1.3;
    std::vector<Station> stations = Shank(radius, length);
    AppendLayer(stations, height - kChamfer, {Hexagon(acrossFlats)});
    stations.push_back({height, {Hexagon(acrossFlats - 2 * kChamfer)}});
    return BuildPrism(stations);
}

SolidMesh MakeDowel(double radius, double length) {
    constexpr double kChamfer = 0.8;
    std::vector<Station> stations = Shank(radius, length - kChamfer);
    stations.push_back({kChamfer, {Circle(radius - kChamfer, kSmallCorners)}});
    return BuildPrism(stations);
}

SolidMesh MakeEndCover(const CoverSize& size, double shaftHole) {
    constexpr double kSpigotHeight = 8;
    constexpr double kFlangeHeight = 8;
    constexpr double kRaisedHeight = 4;
    constexpr double kBoltHole = 3.4;
    Region hole;
    if (shaftHole > 0) hole.push_back(Hole(Circle(shaftHole, kRoundCorners)));
    const Region spigot = Join({Circle(size.spigot, kRoundCorners)}, hole);
    const Region bolts = HolesOnCircle(size.boltCircle, kBoltHole, size.bolts, std::numbers::pi / size.bolts);
    std::vector<Station> stations{{-kSpigotHeight, spigot}, {0, spigot}};
    AppendLayer(stations, kFlangeHeight, Join(Join({Circle(size.flange, 2 * kRoundCorners)}, hole), bolts));
    AppendLayer(stations, kRaisedHeight, Join({Circle(size.spigot - 2, kRoundCorners)}, hole));
    return BuildPrism(stations);
}

SolidMesh MakeInspectionCover() {
    constexpr double kHole = 3.4;
    const Region hole{Hole(Circle(8, kSmallCorners))};
    Region plate{RoundedRectangle({-82, -40}, {82, 40}, 12)};
    for (const double x : {-70, 70}) {
        for (const double y : {-24, 24}) plate.push_back(Hole(Circle(kHole, kSmallCorners, {x, y})));
    }
    std::vector<Station> stations;
    AppendLayer(stations, 6, Join(plate, hole));
    AppendLayer(stations, 3, Join({RoundedRectangle({-50, -26}, {50, 26}, 8)}, hole));
    return BuildPrism(stations);
}

SolidMesh MakeBreather() {
    std::vector<Station> stations = Shank(7.8, 12);
    AppendLayer(stations, 8, {Hexagon(24)});
    AppendLayer(stations, 4, {Circle(9, kSmallCorners)});
    AppendLayer(stations, 8, {Circle(16, kRoundCorners)});
    stations.push_back({stations.back().z + 4, {Circle(11, kRoundCorners)}});
    return BuildPrism(stations);
}

SolidMesh MakeDrainPlug() {
    std::vector<Station> stations = Shank(9.8, 14);
    AppendLayer(stations, 4, {Circle(15, kRoundCorners)});
    AppendLayer(stations, 9, {Hexagon(17)});
    stations.push_back({stations.back().z + 1, {Hexagon(15.5)}});
    return BuildPrism(stations);
}

SolidMesh MakeSightGlass() {
    std::vector<Station> stations = Shank(9.8, 12);
    AppendLayer(stations, 5, {Hexagon(32)});
    AppendLayer(stations, 5, {Hexagon(32), Hole(Circle(10, kRoundCorners))});
    AppendLayer(stations, 1, {Circle(14, kRoundCorners), Hole(Circle(10, kRoundCorners))});
    return BuildPrism(stations);
}

}  // namespace zrsheet
