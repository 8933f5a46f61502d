// The reducer's housing: a tray and a hood that meet in the plane of the shafts' axes, z = 0. Shafts lie
// along y.

#pragma once

#include <array>

#include "app/sample/Contour.h"
#include "app/sample/SolidMesh.h"

namespace zrsheet {

/// A shaft's place in the parting plane, and its bearings' seat.
struct ShaftSeat {
    double x = 0.0;
    double bore = 0.0;  // radius
    double boss = 0.0;  // radius
};

inline constexpr std::array<ShaftSeat, 3> kShaftSeats{ShaftSeat{-96, 26, 38}, {0, 26, 38}, {125, 40, 54}};

/// The plane of the bosses' ends, at y and -y.
inline constexpr double kHousingHalfWidth = 80;
inline constexpr double kFlangeHeight = 12;
inline constexpr double kRoof = 118;     // outer height of the hood's flat part
inline constexpr double kEndWall = 242;  // x of the outer face that plugs sit in

inline constexpr std::array<Point2, 10> kFlangeBolts{Point2{-154, -71}, {-48, -71}, {54.5, -71}, {205, -71},
                                                     {252, -71},        {-154, 71}, {-48, 71},   {54.5, 71},
                                                     {205, 71},         {252, 71}};
inline constexpr std::array<Point2, 2> kDowels{Point2{-154, 30}, {252, -30}};
inline constexpr std::array<Point2, 4> kCoverScrews{Point2{60, -24}, {200, -24}, {60, 24}, {200, 24}};
inline constexpr double kDrainHeight = -92;
inline constexpr double kSightHeight = -52;

[[nodiscard]] SolidMesh MakeLowerHousing();
[[nodiscard]] SolidMesh MakeUpperHousing();

}  // namespace zrsheet
