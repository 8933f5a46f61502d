#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "app/sample/ColumnSolid.h"
#include "app/sample/Contour.h"
#include "app/sample/Prism.h"
#include "app/sample/Triangulation.h"
#include "tests/app/import/SolidChecks.h"

namespace zrsheet {
namespace {

void ExpectSolid(const SolidMesh& mesh, double volume, const std::string& name) {
    const AssemblyPart part = mesh.ToPart(name);
    ExpectClosed(part);
    EXPECT_NEAR(Volume(part) / volume, 1, 1e-5) << name;
}

double Area(const Region& region) {
    double area = 0;
    for (const Contour& contour : region) area += DoubleArea(contour) / 2;
    return area;
}

// Holes in one row hide each other from the outline; those on a circle do at many angles.
TEST(Triangulation, CoversARegionOnceWhereverItsHolesAre) {
    const Contour slot = Hole(Rectangle({-30, -1}, {30, 1}));
    const Region row{Hole(Circle(2, 9, {-20, 9})), Hole(Circle(2, 9, {0, 9})), Hole(Circle(2, 9, {20, 9})),
                     slot};
    const std::vector<Region> regions{{Gear(17, 3)},
                                      Join({Rectangle({-40, -20}, {40, 20})}, row),
                                      Join({Gear(40, 2)}, HolesOnCircle(25, 5, 13, 0.1)),
                                      {Circle(20, 48), Hole(KeyedCircle(8, 4, 11))}};
    for (const Region& region : regions) {
        double covered = 0;
        for (const auto& [a, b, c] : Triangulate(region)) {
            const double area = DoubleArea({a, b, c}) / 2;
            EXPECT_GT(area, 0);
            covered += area;
        }
        EXPECT_NEAR(covered, Area(region), 1e-6);
    }
}

// The faces between two layers: larger below, larger above, a slot's open end, islands round a web, a blind
// hole.
TEST(Prism, ClosesEveryKindOfStep) {
    const Contour bore = Hole(Circle(5, 24));
    const Region ring{Circle(20, 48), bore};
    const Region flange = Join({Circle(40, 48)}, HolesOnCircle(30, 3, 6, 0));
    const Region drilledFlange = Join(flange, {bore});
    struct Case {
        std::string name;
        Region low;
        Region high;
    };
    const std::vector<Case> cases{
        {"spigot below", ring, drilledFlange},
        {"spigot above", drilledFlange, ring},
        {"keyway ends", {UnkeyedCircle(10, 6)}, {KeyedCircle(10, 6, 7)}},
        {"keyway starts", {KeyedCircle(10, 6, 7)}, {UnkeyedCircle(10, 6)}},
        {"islands", ring, {Circle(20, 48), Hole(Circle(16, 48)), Circle(9, 24), bore}},
        {"blind holes", {Circle(40, 48)}, flange},
        {"nothing changes", flange, flange},
    };
    for (const auto& [name, low, high] : cases) {
        ExpectSolid(BuildPrism({{-3, low}, {4, low}, {4, high}, {9, high}}), 7 * Area(low) + 5 * Area(high),
                    name);
    }
}

TEST(Prism, ChamfersAndRevolves) {
    const double small = Area({Circle(8, 48)});
    const double large = Area({Circle(10, 48)});
    const double cone = (small + large + std::sqrt(small * large)) * 2 / 3;
    ExpectSolid(BuildPrism({{0, {Circle(8, 48)}}, {2, {Circle(10, 48)}}, {7, {Circle(10, 48)}}}),
                cone + 5 * large, "chamfered");
    ExpectSolid(Revolve({{8, 0}, {10, 0}, {10, 6}, {8, 6}}, 48), 6 * (large - small), "ring");
    ExpectSolid(Revolve({{0, 0}, {10, 0}, {0, 6}}, 48), 2 * large, "cone on the axis");
}

// A block with a half bore in its top, a hole beside it, a window through its end wall and a boss under the
// bore.
TEST(ColumnSolid, CutsBoresHolesAndWindowsExactly) {
    constexpr int kChords = 12;
    std::vector<double> xs{-30, -20, 20, 30};
    std::vector<double> ys{-20, -10, 10, 20, 24};
    for (int i = 0; i <= kChords; ++i) {
        xs.push_back(10 * std::cos(std::numbers::pi * i / kChords));
        ys.push_back(4 * std::cos(std::numbers::pi * i / kChords));
    }
    const auto chord = [](double radius, double offset) {
        return std::sqrt(std::max(0.0, radius * radius - offset * offset));
    };
    const auto flat = [](double z) { return [z](const Point2&) { return z; }; };
    ColumnSolid solid(xs, ys);
    solid.Add({{-30, -20}, {30, 20}}, flat(-40), flat(0));
    solid.Add({{-10, 20}, {10, 24}}, flat(-20), flat(0));
    solid.Cut(
        {{-10, -20}, {10, 24}}, [&](const Point2& at) { return -chord(10, at[0]); }, flat(1));
    solid.Cut(
        {{20, -4}, {30, 4}}, [&](const Point2& at) { return -25 - chord(4, at[1]); },
        [&](const Point2& at) { return -25 + chord(4, at[1]); });
    solid.Drill({-25, 15}, 3);
    const double volume = 60 * 40 * 40 + 20 * 4 * 20 - 44 * Area({Circle(10, 2 * kChords)}) / 2 -
                          10 * Area({Circle(4, 2 * kChords)}) - 40 * Area({Circle(3, 24)});
    // The window ends in the material; all curves lie on lines, so that nothing is lost but what chords lose.
    ExpectSolid(solid.Build(), volume, "block");
}

}  // namespace
}  // namespace zrsheet
