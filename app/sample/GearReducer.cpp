#include "app/sample/GearReducer.h"

#include <cmath>
#include <numbers>

#include "app/sample/AssemblyBuilder.h"
#include "app/sample/Housing.h"
#include "app/sample/MachineParts.h"

namespace zrsheet {
namespace {

// How far things are drawn apart.
constexpr double kHoodLift = 300;
constexpr double kShaftLift = 130;
constexpr double kFlangeBoltLift = 60;
constexpr double kCoverPull = 40;
constexpr double kCoverBoltPull = 75;
constexpr double kSealPull = 18;
constexpr double kInspectionLift = 45;
constexpr double kScrewLift = 35;
constexpr double kBreatherLift = 60;
constexpr double kPlugPull = 40;

constexpr double kBearingPlace = 61.5;  // middle, from the middle of the shaft
constexpr int kBalls = 9;
constexpr double kKeyWidth = 8;
constexpr BearingSize kSmallBearing{12.5, 26, 15, 4};
constexpr BearingSize kLargeBearing{20, 40, 18, 5.8};
constexpr CoverSize kSmallCover{25.8, 38, 32, 4};
constexpr CoverSize kLargeCover{39.8, 54, 47, 6};

// The parts of one size of bearing seat.
struct SeatParts {
    BearingSize bearing;
    CoverSize cover;
    std::string bearingNumber;
    int innerRing = -1;
    int outerRing = -1;
    int ball = -1;
    int blindCover = -1;
    int openCover = -1;
    int seal = -1;
};

// One wheel on a shaft, with its key and its distance ring.
struct WheelPlace {
    int part = -1;
    double middle = 0.0;
    int key = -1;
    double keyStart = 0.0;
    double seatRadius = 0.0;
    int spacer = -1;
    double spacerStart = 0.0;
};

// What stands on a shaft besides its bearings.
struct ShaftPlan {
    std::string name;
    std::string number;
    double x = 0.0;
    int shaft = -1;
    std::vector<WheelPlace> wheels;
    int openEnd = 0;  // side of the driven or driving end, 1 or -1; 0: both are covered
    double endKeyStart = 0.0;
    double endRadius = 0.0;
    double turn = 0.0;  // of shaft and wheels, so that teeth mesh; radians
};

class GearReducerMaker {
public:
    Assembly Run() {
        m_top = m_builder.AddGroup(-1, "Gear Reducer", "GR-1000", {{0, 0, 0}, 3});
        m_bolt = Define("Hex Bolt M6x18", "GR-9006", "Steel 8.8", MakeHexBolt(3, 18));
        AddHousing();
        const SeatParts small = DefineSeat("6205", "Small", kSmallBearing, kSmallCover, 14.0);
        const SeatParts large = DefineSeat("6208", "Large", kLargeBearing, kLargeCover, 21.0);
        AddShaft(PlanInput(), small);
        AddShaft(PlanIntermediate(), small);
        AddShaft(PlanOutput(), large);
        return m_builder.Take();
    }

private:
    int Define(const std::string& name, const std::string& number, const std::string& material,
               const SolidMesh& mesh) {
        return m_builder.DefinePart({name, number, material}, mesh);
    }

    void AddHousing() {
        const int housing = m_builder.AddGroup(m_top, "Housing Assembly", "GR-1100");
        m_builder.AddPart(housing,
                          Define("Lower Housing", "GR-1101", "Cast Iron EN-GJL-250", MakeLowerHousing()));
        m_builder.AddPart(housing,
                          Define("Upper Housing", "GR-1102", "Cast Iron EN-GJL-250", MakeUpperHousing()),
                          {{0, 0, kHoodLift}});
        const int dowel = Define("Dowel Pin 8x24", "GR-9008", "Steel 100Cr6", MakeDowel(4, 24));
        for (const Point2& at : kDowels) m_builder.AddPart(housing, dowel, {{at[0], at[1], kShaftLift / 2}});
        AddFlangeBolts(housing);
        AddPlugs(housing);
        AddInspectionCover(housing);
    }

    void AddFlangeBolts(int housing) {
        const int bolt = Define("Hex Bolt M10x36", "GR-9010", "Steel 8.8", MakeHexBolt(5, 36));
        const int washer = Define("Washer M10", "GR-9011", "Steel 200 HV", MakeRing(5.3, 10, 2));
        for (const Point2& at : kFlangeBolts) {
            const double z = kHoodLift + kFlangeHeight;
            m_builder.AddPart(housing, bolt, {{at[0], at[1], z + kFlangeBoltLift}});
            m_builder.AddPart(housing, washer, {{at[0], at[1], z + kFlangeBoltLift / 4}});
        }
    }

    void AddPlugs(int housing) {
        const int drain = Define("Drain Plug", "GR-1105", "Steel, zinc plated", MakeDrainPlug());
        const int sight = Define("Sight Glass", "GR-1106", "Brass and Glass", MakeSightGlass());
        m_builder.AddPart(housing, drain, {{kEndWall + kPlugPull, 0, kDrainHeight}, 0, 1});
        m_builder.AddPart(housing, sight, {{kEndWall + kPlugPull, 0, kSightHeight}, 0, 1});
    }

    void AddInspectionCover(int housing) {
        constexpr double kPlateHeight = 6;
        constexpr double kPadHeight = 9;
        const Point3 middle{(kCoverScrews[0][0] + kCoverScrews[1][0]) / 2, 0,
                            kHoodLift + kRoof + kInspectionLift};
        const int group = m_builder.AddGroup(housing, "Inspection Cover Assembly", "GR-1110", {middle});
        m_builder.AddPart(group, Define("Inspection Cover", "GR-1111", "Steel S235", MakeInspectionCover()));
        m_builder.AddPart(group, Define("Breather", "GR-1112", "Brass", MakeBreather()),
                          {{0, 0, kPadHeight + kBreatherLift}});
        for (const Point2& at : kCoverScrews) {
            m_builder.AddPart(group, m_bolt, {{at[0] - middle[0], at[1], kPlateHeight + kScrewLift}});
        }
    }

    SeatParts DefineSeat(const std::string& bearingNumber, const std::string& size,
                         const BearingSize& bearing, const CoverSize& cover, double shaftHole) {
        const std::string prefix = "GR-2" + bearingNumber.substr(1);
        const std::string iron = "Cast Iron EN-GJL-200";
        const std::string steel = "Steel 100Cr6";
        return {bearing,
                cover,
                bearingNumber,
                Define("Inner Ring " + bearingNumber, prefix + "-1", steel, MakeInnerRing(bearing)),
                Define("Outer Ring " + bearingNumber, prefix + "-2", steel, MakeOuterRing(bearing)),
                Define("Ball " + bearingNumber, prefix + "-3", steel, MakeBall(bearing.ball)),
                Define(size + " End Cover, blind", prefix + "-4", iron, MakeEndCover(cover, 0)),
                Define(size + " End Cover, open", prefix + "-5", iron, MakeEndCover(cover, shaftHole)),
                Define(size + " Shaft Seal", prefix + "-6", "NBR 70",
                       MakeShaftSeal(shaftHole - 2, shaftHole + 6, 8))};
    }

    ShaftPlan PlanInput() {
        const int shaft = Define("Input Shaft", "GR-1201", "Steel 42CrMo4",
                                 MakeShaft(-71, {{19, 12.5},
                                                 {18, 16, kKeyWidth},
                                                 {22, 16, kKeyWidth, true},
                                                 {4, 16, kKeyWidth},
                                                 {6, 20},
                                                 {54, 15},
                                                 {20, 12.5},
                                                 {23, 12},
                                                 {8, 11, kKeyWidth},
                                                 {30, 11, kKeyWidth, true},
                                                 {3, 11, kKeyWidth}}));
        const int pinion =
            Define("Pinion z24 m2", "GR-1202", "Steel 16MnCr5", MakeGear(24, 2, 28, 16, kKeyWidth));
        m_wheelKey = Define("Key 8x7x22", "GR-9022", "Steel C45", MakeKey(kKeyWidth, 21.8));
        m_endKey = Define("Key 8x7x30", "GR-9030", "Steel C45", MakeKey(kKeyWidth, 29.8));
        m_spacer = Define("Spacer 32x14", "GR-1203", "Steel S235", MakeRing(16.1, 21, 14));
        return {"Input Shaft Assembly",
                "GR-1200",
                kShaftSeats[0].x,
                shaft,
                {{pinion, -22, m_wheelKey, -33.9, 16, m_spacer, -51}},
                1,
                103.1,
                11,
                std::numbers::pi / 24};
    }

    ShaftPlan PlanIntermediate() {
        const int shaft = Define("Intermediate Shaft", "GR-1301", "Steel 42CrMo4",
                                 MakeShaft(-71, {{19, 12.5},
                                                 {19, 16, kKeyWidth},
                                                 {22, 16, kKeyWidth, true},
                                                 {3, 16, kKeyWidth},
                                                 {8, 20},
                                                 {7, 16, kKeyWidth},
                                                 {26, 16, kKeyWidth, true},
                                                 {19, 16, kKeyWidth},
                                                 {19, 12.5}}));
        const int wheel =
            Define("Gear z72 m2", "GR-1302", "Steel 16MnCr5", MakeGear(72, 2, 24, 16, kKeyWidth));
        const int pinion =
            Define("Pinion z25 m2.5", "GR-1303", "Steel 16MnCr5", MakeGear(25, 2.5, 36, 16, kKeyWidth));
        m_longKey = Define("Key 8x7x26", "GR-9026", "Steel C45", MakeKey(kKeyWidth, 25.8));
        return {"Intermediate Shaft Assembly",
                "GR-1300",
                kShaftSeats[1].x,
                shaft,
                {{wheel, -22, m_wheelKey, -32.9, 16, m_spacer, -50},
                 {pinion, 20, m_longKey, 7.1, 16, m_spacer, 38}}};
    }

    ShaftPlan PlanOutput() {
        const int shaft = Define("Output Shaft", "GR-1401", "Steel 42CrMo4",
                                 MakeShaft(-155, {{5, 18, kKeyWidth},
                                                  {30, 18, kKeyWidth, true},
                                                  {19, 18, kKeyWidth},
                                                  {29, 19.5},
                                                  {20, 20},
                                                  {48, 24},
                                                  {8, 30},
                                                  {3, 24, kKeyWidth},
                                                  {26, 24, kKeyWidth, true},
                                                  {19, 24, kKeyWidth},
                                                  {21, 20}}));
        const int wheel =
            Define("Gear z75 m2.5", "GR-1402", "Steel 16MnCr5", MakeGear(75, 2.5, 32, 24, kKeyWidth));
        const int spacer = Define("Spacer 48x16", "GR-1403", "Steel S235", MakeRing(24.1, 30, 16));
        return {"Output Shaft Assembly",
                "GR-1400",
                kShaftSeats[2].x,
                shaft,
                {{wheel, 20, m_longKey, 7.1, 24, spacer, 36}},
                -1,
                -149.9,
                18};
    }

    void AddShaft(const ShaftPlan& plan, const SeatParts& seat) {
        const int group = m_builder.AddGroup(m_top, plan.name, plan.number, {{plan.x, 0, kShaftLift}, 3});
        m_builder.AddPart(group, plan.shaft, {{0, 0, 0}, 0, 0, plan.turn});
        if (plan.openEnd != 0) AddKey(group, m_endKey, plan.endRadius, plan.endKeyStart, plan.turn);
        for (const WheelPlace& wheel : plan.wheels) {
            AddKey(group, wheel.key, wheel.seatRadius, wheel.keyStart, plan.turn);
            m_builder.AddPart(group, wheel.part, {{0, 0, wheel.middle}, 0, 0, plan.turn});
            m_builder.AddPart(group, wheel.spacer, {{0, 0, wheel.spacerStart}});
        }
        for (const int side : {-1, 1}) {
            AddBearing(group, side, seat);
            AddCover(group, side, seat, side == plan.openEnd);
        }
    }

    void AddKey(int group, int key, double shaftRadius, double start, double turn) {
        const double out = KeySeat(shaftRadius);
        m_builder.AddPart(group, key, {{out * std::cos(turn), out * std::sin(turn), start}, 0, 0, turn});
    }

    void AddBearing(int group, int side, const SeatParts& seat) {
        const int bearing =
            m_builder.AddGroup(group, "Ball Bearing " + seat.bearingNumber,
                               "GR-2" + seat.bearingNumber.substr(1), {{0, 0, side * kBearingPlace}});
        m_builder.AddPart(bearing, seat.innerRing);
        m_builder.AddPart(bearing, seat.outerRing);
        for (int i = 0; i < kBalls; ++i) {
            const double angle = 2 * std::numbers::pi * i / kBalls;
            const double radius = seat.bearing.Pitch();
            m_builder.AddPart(bearing, seat.ball, {{radius * std::cos(angle), radius * std::sin(angle), 0}});
        }
    }

    void AddCover(int group, int side, const SeatParts& seat, bool isOpen) {
        constexpr double kFlangeThickness = 8;
        const int quarters = side > 0 ? 0 : 2;  // outwards
        const auto out = [side](double distance) { return side * (kHousingHalfWidth + distance); };
        if (isOpen) m_builder.AddPart(group, seat.seal, {{0, 0, out(kSealPull)}, quarters});
        m_builder.AddPart(group, isOpen ? seat.openCover : seat.blindCover,
                          {{0, 0, out(kCoverPull)}, quarters});
        for (int i = 0; i < seat.cover.bolts; ++i) {
            const double angle = (2 * i + 1) * std::numbers::pi / seat.cover.bolts;
            const double radius = seat.cover.boltCircle;
            m_builder.AddPart(
                group, m_bolt,
                {{radius * std::cos(angle), radius * std::sin(angle), out(kFlangeThickness + kCoverBoltPull)},
                 quarters});
        }
    }

    AssemblyBuilder m_builder;
    int m_top = -1;
    int m_bolt = -1;
    int m_wheelKey = -1;
    int m_longKey = -1;
    int m_endKey = -1;
    int m_spacer = -1;
};

}  // namespace

Assembly MakeGearReducer() { return GearReducerMaker().Run(); }

}  // namespace zrsheet
