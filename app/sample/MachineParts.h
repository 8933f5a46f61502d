// The turned, milled and bought parts of a gear reducer. Axis z, millimetres.

#pragma once

#include <vector>

#include "app/sample/SolidMesh.h"

namespace zrsheet {

/// A stretch of a shaft. Stretches of a shaft that share one radius and key width share a keyway that
/// `isKeyed` opens.
struct ShaftStep {
    double length = 0.0;
    double radius = 0.0;
    double keyWidth = 0.0;
    bool isKeyed = false;
};

/// Turned from z = `start` upwards, both ends chamfered.
[[nodiscard]] SolidMesh MakeShaft(double start, const std::vector<ShaftStep>& steps);

/// A key from z = 0 upwards, its underside at x = 0; it lies that far from a shaft's axis.
[[nodiscard]] SolidMesh MakeKey(double width, double length);
[[nodiscard]] double KeySeat(double shaftRadius);

/// A gear centred on z = 0 with a bore keyed for `boreRadius`; a gear wide enough for one has a web with
/// holes.
[[nodiscard]] SolidMesh MakeGear(int teeth, double module, double width, double boreRadius, double keyWidth);

/// A deep groove ball bearing, centred on z = 0.
struct BearingSize {
    double bore = 0.0;
    double outer = 0.0;
    double width = 0.0;
    double ball = 0.0;  // all radii but the width
    [[nodiscard]] double Pitch() const { return (bore + outer) / 2; }
};
[[nodiscard]] SolidMesh MakeInnerRing(const BearingSize& size);
[[nodiscard]] SolidMesh MakeOuterRing(const BearingSize& size);
[[nodiscard]] SolidMesh MakeBall(double radius);

/// Ring of rectangular section, from z = 0 upwards: washers, spacers.
[[nodiscard]] SolidMesh MakeRing(double inner, double outer, double height);
[[nodiscard]] SolidMesh MakeShaftSeal(double shaft, double outer, double height);

/// Hexagon head above z = 0, shank below.
[[nodiscard]] SolidMesh MakeHexBolt(double radius, double length);
[[nodiscard]] SolidMesh MakeDowel(double radius, double length);

/// A bearing's cover: flange above z = 0, spigot below; `shaftHole` 0 closes it.
struct CoverSize {
    double spigot = 0.0;
    double flange = 0.0;
    double boltCircle = 0.0;
    int bolts = 0;
};
[[nodiscard]] SolidMesh MakeEndCover(const CoverSize& size, double shaftHole);

[[nodiscard]] SolidMesh MakeInspectionCover();
[[nodiscard]] SolidMesh MakeBreather();
[[nodiscard]] SolidMesh MakeDrainPlug();
[[nodiscard]] SolidMesh MakeSightGlass();

}  // namespace zrsheet
