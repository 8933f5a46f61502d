#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "tests/app/lineart/ArtStage.h"

namespace zrsheet::test {
namespace {

constexpr double kNear = 0.1;  // pixels; lines are drawn so exactly that nobody sees the difference

/// Is it the straight line between two places, whichever way?
bool Joins(const Stroke& stroke, const ArtPoint& a, const ArtPoint& b) {
    return (Distance(stroke.from, a) < kNear && Distance(stroke.to, b) < kNear) ||
           (Distance(stroke.from, b) < kNear && Distance(stroke.to, a) < kNear);
}

bool HasLine(const std::vector<Stroke>& strokes, const ArtPoint& a, const ArtPoint& b) {
    return std::any_of(strokes.begin(), strokes.end(), [&](const Stroke& s) { return Joins(s, a, b); });
}

long CountOf(const std::vector<Stroke>& strokes, LineKind kind) {
    return std::count_if(strokes.begin(), strokes.end(),
                         [kind](const Stroke& stroke) { return stroke.kind == kind; });
}

// However the triangles are wound and the box is placed, near or far.
TEST(LineArt, DrawsNineEdgesOfACubeAndHidesThree) {
    const ShapePtr cube = Box({-50, -50, -50}, {50, 50, 50});
    const dg::Location mirrored(dg::DMat44({-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}));
    const auto perspective =
        dg::Camera3D::Perspective({160, 190, 220}, {}, {0, 1, 0}, 0.6, 50.0, 1000.0, 400, 300);
    ArtStage parallel;
    parallel.LookFrom({0.6, 0.7, 1.0});
    struct Case {
        const char* what;
        ShapePtr shape;
        dg::Location location;
        dg::Camera3D camera;
    };
    const Case cases[] = {{"plain", cube, {}, parallel.Camera()},
                          {"inside out", InsideOut(cube), {}, parallel.Camera()},
                          {"mirrored", cube, mirrored, parallel.Camera()},
                          {"in perspective", cube, {}, perspective}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        ArtStage stage;
        stage.Add(c.shape, c.location);
        stage.SetCamera(c.camera);
        const auto seen = stage.Strokes();
        EXPECT_EQ(CountOf(seen, LineKind::Outline), 6);
        EXPECT_EQ(CountOf(seen, LineKind::Edge), 3);
        EXPECT_EQ(seen.size(), 9U);
        stage.Rule().withHidden = true;
        EXPECT_EQ(CountOf(stage.Strokes(), LineKind::Hidden), 3);
    }
}

// Twenty-four sides are nobody's idea of a circle, but it is what was meant: the rims are ellipses, the
// mantle's contours touch them, and no line shows where facets meet.
TEST(LineArt, DrawsADrumAsTwoEllipsesAndTwoStraightLines) {
    constexpr double kRadius = 100.0;
    ArtStage stage;
    stage.Add(Drum(kRadius, 120, 24), Turned({1, 0, 0}, -90, {0, -60, 0}));
    stage.LookFrom({0, 0.5, std::sqrt(0.75)});
    const ArtPoint low = stage.PixelOf({0, -60, 0});
    const ArtPoint high = stage.PixelOf({0, 60, 0});
    const auto offEllipse = [&](const ArtPoint& p, const ArtPoint& middle) {
        return std::abs(std::hypot(p.x - middle.x, (p.y - middle.y) / 0.5) - kRadius);
    };
    double straight = 0.0;
    for (const Stroke& stroke : stage.Strokes()) {
        if (stroke.Length() > 40.0) {
            EXPECT_NEAR(std::abs(stroke.from.x - high.x), kRadius, kNear);
            EXPECT_NEAR(std::abs(stroke.to.x - high.x), kRadius, kNear);
            straight += stroke.Length();
            continue;
        }
        const bool isHigh =
            std::min(stroke.from.y, stroke.to.y) < high.y + 51.0 && offEllipse(stroke.from, high) < 0.4;
        const ArtPoint middle{0.5 * (stroke.from.x + stroke.to.x), 0.5 * (stroke.from.y + stroke.to.y)};
        for (const ArtPoint& point : {stroke.from, middle, stroke.to})
            EXPECT_LT(offEllipse(point, isHigh ? high : low), 0.4) << point.x << ' ' << point.y;
    }
    EXPECT_NEAR(straight, 2.0 * (low.y - high.y), 1.0);
    const double ellipse = 2.0 * std::numbers::pi * kRadius * 0.7708;  // for half axes of 2 to 1
    const double length = stage.LengthOf(LineKind::Outline) + stage.LengthOf(LineKind::Edge);
    // On both sides the front of the upper rim leaves the contour that begins there by half a pixel only
    // after a tenth of its half axis; until then the two are one line.
    const double merged = 2.0 * 0.1 * 0.5 * kRadius;
    EXPECT_NEAR(length, 1.5 * ellipse + straight - merged, 1.5);
}

/// A drum whose rims are creases, and so many uprights of its mantle.
ShapePtr CreasedDrum(int sides, std::uint32_t uprights) {
    const ShapePtr drum = Drum(100.0, 120, sides);
    const auto count = static_cast<std::uint32_t>(sides);
    zrg::Shape::Creases creases;
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint32_t low = 2 + 2 * i;
        const std::uint32_t next = 2 + 2 * ((i + 1) % count);
        creases.insert(creases.end(), {low, next, low + 1, next + 1});
        if (i < uprights) creases.insert(creases.end(), {low + 1, low});
    }
    return ShapePtr(new zrg::Shape({drum->GetPositions().begin(), drum->GetPositions().end()},
                                   {drum->GetIndices().begin(), drum->GetIndices().end()},
                                   std::move(creases)));
}

// However much facets turn in what the file knows to be one face, and however little where it knows two.
TEST(LineArt, BelievesTheFileWhereFacesCrease) {
    const auto uprights = [](const ShapePtr& shape) {
        ArtStage stage;
        stage.Add(shape, Turned({1, 0, 0}, -90, {0, -60, 0}));
        stage.LookFrom({0, 0.5, std::sqrt(0.75)});
        const auto strokes = stage.Strokes();
        return std::count_if(strokes.begin(), strokes.end(), [](const Stroke& stroke) {
            return stroke.Length() > 60.0 && std::abs(stroke.from.x - stroke.to.x) < 1.0;
        });
    };
    EXPECT_EQ(uprights(Drum(100.0, 120, 8)), 5) << "nothing is told, and five of the corners are seen";
    EXPECT_EQ(uprights(CreasedDrum(8, 0)), 2) << "the contours";
    EXPECT_EQ(uprights(CreasedDrum(36, 36)), 18 + 1) << "half of them";
}

/// A bar of triangles whose upper side falls away along its middle line (y = 0), by `turns` degrees, one for
/// each stretch of its length.
ShapePtr Ridge(const std::vector<double>& turns) {
    std::vector<float> positions;
    std::vector<std::uint32_t> indices;
    const auto add = [&positions](double x, double y, double z) {
        for (const double value : {x, y, z}) positions.push_back(static_cast<float>(value));
    };
    for (std::size_t i = 0; i <= turns.size(); ++i) {
        const double turn = turns[std::min(i, turns.size() - 1)];
        const double fall = 40.0 * std::tan(0.5 * turn * std::numbers::pi / 180.0);
        add(30.0 * static_cast<double>(i), 0, 0);
        add(30.0 * static_cast<double>(i), -40, -fall);
        add(30.0 * static_cast<double>(i), 40, -fall);
        if (i == 0) continue;
        const auto now = static_cast<std::uint32_t>(3 * i);
        indices.insert(indices.end(), {now - 3, now - 2, now + 1, now - 3, now + 1, now, now - 3, now,
                                       now + 2, now - 3, now + 2, now - 1});
    }
    return ShapePtr(new zrg::Shape(std::move(positions), std::move(indices)));
}

// On the rounds of coarse meshes chance decides which edges turn enough: no line ends there in the middle.
TEST(LineArt, NeitherEndsLinesNorBeginsThemInTheMiddleOfASurface) {
    const auto ridgeLength = [](const std::vector<double>& turns) {
        ArtStage stage;
        stage.Add(Ridge(turns), dg::Location(dg::FMat33(), {-100, 0, 0}));
        double length = 0.0;
        for (const Stroke& stroke : stage.Strokes()) {
            const bool isRidge = std::abs(stroke.from.y - 150) < 1 && std::abs(stroke.to.y - 150) < 1;
            length += isRidge ? stroke.Length() : 0.0;
        }
        return length;
    };
    EXPECT_NEAR(ridgeLength({40, 40, 26, 26, 40, 40}), 180, kNear) << "goes on to the next";
    EXPECT_EQ(ridgeLength({5, 5, 40, 40, 5, 5}), 0) << "is left out: nothing to go on to";
    EXPECT_GT(ridgeLength({5, 18, 36, 60, 36, 18, 5}), 25) << "an edge of its own";
}

// Faces that a file has one by one, with borders rounded each for itself, are one surface nevertheless; also
// in a file that has rounded all positions to a coarse grid.
TEST(LineArt, DrawsNoCracks) {
    struct Case {
        int sides;
        float apart;
        float grain;
    };
    for (const auto& [sides, apart, grain] : {Case{24, 0.004F, 0.0F}, Case{360, 0.1F, 0.25F}}) {
        const ShapePtr mantle = Mantle(100.0, 120, sides);
        std::vector<float> positions(mantle->GetPositions().begin(), mantle->GetPositions().end());
        for (std::size_t i = 0; i < positions.size(); ++i) {
            positions[i] += i % 5 < 2 ? apart : -apart;
            if (grain > 0.0F) positions[i] = grain * std::round(positions[i] / grain);
        }
        ArtStage stage;
        stage.Add(
            ShapePtr(new zrg::Shape(positions, {mantle->GetIndices().begin(), mantle->GetIndices().end()})),
            Turned({1, 0, 0}, -90, {0, -60, 0}));
        stage.LookFrom({0, 0, 1});
        double uprights = 0.0;
        for (const Stroke& stroke : stage.Strokes())
            uprights += std::abs(stroke.from.x - stroke.to.x) < 1.0 ? stroke.Length() : 0.0;
        EXPECT_NEAR(uprights, 2.0 * 120.0, 3.0) << "the contours, of " << sides << " sides";
    }
}

// A comb has its points on a grid by design, and what is between its teeth is no crack.
TEST(LineArt, KeepsSlitsThatAreNoWiderThanTheGridOfTheirFile) {
    std::vector<float> positions;
    std::vector<std::uint32_t> indices;
    for (std::uint32_t tooth = 0; tooth < 300; ++tooth) {
        const float left = static_cast<float>(tooth) - 150.0F;
        positions.insert(positions.end(), {left, 0, 0, left + 0.5F, 0, 0, left + 0.5F, 100, 0, left, 100, 0});
        for (const std::uint32_t corner : {0U, 1U, 2U, 0U, 2U, 3U}) indices.push_back(4 * tooth + corner);
    }
    ArtStage stage;
    stage.Add(ShapePtr(new zrg::Shape(positions, indices)));
    stage.LookFrom({0, 0, 1});
    EXPECT_GT(stage.LengthOf(LineKind::Outline) + stage.LengthOf(LineKind::Edge), 300.0 * 150.0);
}

// The tip of a rim and the contour that begins there come from different rules.
TEST(LineArt, LeavesNoGapInTheOutlineOfARoundPart) {
    for (const int sides : {16, 24, 37}) {
        ArtStage stage;
        stage.Add(Drum(80, 150, sides), Turned({0.3, 1, 0.2}, 77));
        stage.LookFrom({0.4, 0.5, 1.0});
        std::vector<ArtPoint> ends;
        for (const ArtLine& line : stage.Draw().lines) {
            if (line.kind == LineKind::Outline && !line.isClosed)
                ends.insert(ends.end(), {line.points.front(), line.points.back()});
        }
        for (const ArtPoint& end : ends) {
            const auto near = std::count_if(ends.begin(), ends.end(), [&end](const ArtPoint& other) {
                return Distance(end, other) < 0.6;
            });
            EXPECT_EQ(near, 2) << sides << " sides: an end at " << end.x << ", " << end.y;
        }
    }
}

TEST(LineArt, DrawsWherePartsRunThroughEachOther) {
    ArtStage stage;
    stage.Add(Box({-80, -60, -40}, {80, 60, 40}));
    stage.Add(Box({-20, -20, 0}, {30, 10, 90}));
    stage.LookFrom({0.5, 0.6, 1.0});
    std::vector<Stroke> crossings = stage.Strokes();
    std::erase_if(crossings, [](const Stroke& stroke) { return stroke.kind != LineKind::Crossing; });
    ASSERT_EQ(crossings.size(), 2U) << "the others are behind the smaller box";
    const ArtPoint corner = stage.PixelOf({30, 10, 40});
    const ArtPoint left = stage.PixelOf({-20, 10, 40});
    const ArtPoint bottom = stage.PixelOf({30, -20, 40});
    EXPECT_TRUE(HasLine(crossings, left, corner));
    EXPECT_TRUE(HasLine(crossings, bottom, corner));
}

/// First the one, then the other.
dg::Location Joined(const dg::Location& first, const dg::Location& second) {
    return dg::Location(first.GetXform() * second.GetXform());
}

// What the first copy of a product tells about the others must be moved to them, and turned; one whose parts
// stand otherwise is none.
TEST(LineArt, DrawsWhereTheCopiesOfAProductRunThroughEachOther) {
    struct Copy {
        dg::Location place;
        double postX = 0.0;
    };
    const auto crossings = [](const std::vector<Copy>& copies) {
        ArtStage stage;
        const ShapePtr slab = Box({-80, -60, -40}, {80, 60, 40});
        const ShapePtr post = Box({-20, -20, 0}, {30, 10, 90});
        for (const Copy& copy : copies) {
            stage.Add(slab, copy.place);
            stage.Add(post, Joined(dg::Location(dg::FMat33(), {copy.postX, 0, 0}), copy.place));
        }
        stage.LookFrom({0.5, 0.6, 1.0}, 0.8);
        return stage.LengthOf(LineKind::Crossing);
    };
    const Copy first{Turned({0, 0, 1}, 20, {-120, 10, 0})};
    const dg::Location elsewhere = Turned({0.2, 0, 1}, 100, {110, -10, 0});
    for (const Copy& second : {Copy{elsewhere}, Copy{elsewhere, 70.0}}) {
        const double alone = crossings({second});
        EXPECT_GT(alone, 40.0);
        EXPECT_NEAR(crossings({first, second}), crossings({first}) + alone, 0.5) << second.postX;
    }
}

// Parts that touch have the lines of their edges, and a pin in its hole those of its rim: no more.
TEST(LineArt, DrawsNothingWherePartsOnlyTouch) {
    ArtStage stage;
    const dg::Location tilt = Turned({0.3, 1, 0.2}, 31.7);  // so that coordinates are rounded
    const auto drumAt = [&tilt](double z) { return Joined(dg::Location(dg::FMat33(), {-50, 0, z}), tilt); };
    stage.Add(Box({-80, -60, -40}, {80, 60, 40}), tilt);
    stage.Add(Box({-20, -20, 40}, {30, 10, 90}), tilt);
    stage.Add(Drum(20, 60, 24), drumAt(45));
    stage.Add(Drum(20.01, 60, 17), drumAt(35));
    stage.LookFrom({0.5, 0.6, 1.0});
    EXPECT_LT(stage.LengthOf(LineKind::Crossing), 2.0 * std::numbers::pi * 20.5)
        << "one circle at most, of the foot";
}

// As facets of surfaces that nearly coincide do, here and there.
TEST(LineArt, DrawsNoSpecksWhereOnePartHardlyStandsOutOfAnother) {
    ArtStage stage;
    stage.Add(Box({-80, -60, -40}, {80, 60, 40}));
    stage.Add(Box({0, 0, 0}, {0.7, 0.7, 40.5}));
    stage.Add(Box({20, 20, 0}, {21.6, 21.6, 42}));
    stage.LookFrom({0.5, 0.6, 1.0});
    EXPECT_EQ(stage.LengthOf(LineKind::Crossing), 0.0);
    EXPECT_EQ(stage.Draw().areas.size(), 2U) << "less than a square pixel is seen of the smaller";
}

// Copies share what can be shared, which is less when one is turned or seen in perspective.
TEST(LineArt, DrawsCopiesOfAPartAsIfEachStoodAlone) {
    const std::vector<dg::Location> copies{Turned({0, 1, 0}, 10, {-110, 0, 0}), Turned({0, 1, 0}, 10),
                                           Turned({1, 1, 0}, 50, {110, 0, 0})};
    const ShapePtr drum = Drum(30, 60, 24);
    const auto lineLength = [&drum](const std::vector<dg::Location>& places, const dg::Camera3D& camera) {
        ArtStage stage;
        for (const dg::Location& place : places) stage.Add(drum, place);
        stage.SetCamera(camera);
        return stage.LengthOf(LineKind::Outline) + stage.LengthOf(LineKind::Edge);
    };
    ArtStage parallel;
    parallel.LookFrom({0.1, 0.7, 1.0});
    for (const dg::Camera3D& camera :
         {parallel.Camera(),
          dg::Camera3D::Perspective({0, 150, 200}, {}, {0, 1, 0}, 1.0, 50.0, 1000.0, 400, 300)}) {
        double alone = 0.0;
        for (const dg::Location& copy : copies) alone += lineLength({copy}, camera);
        EXPECT_NEAR(lineLength(copies, camera), alone, 0.1);
    }
}

TEST(LineArt, EndsALineWhereAnotherPartBeginsToCoverIt) {
    ArtStage stage;
    stage.Add(Box({-150, -5, -5}, {150, 5, 5}));
    stage.Add(Box({-20.3, -80, 20}, {33.7, 80, 30}));
    const auto strokes = stage.Strokes();
    const ArtPoint cutLeft = stage.PixelOf({-20.3, 5, 5});
    const ArtPoint cutRight = stage.PixelOf({33.7, 5, 5});
    EXPECT_TRUE(HasLine(strokes, stage.PixelOf({-150, 5, 5}), cutLeft));
    EXPECT_TRUE(HasLine(strokes, cutRight, stage.PixelOf({150, 5, 5})));
    EXPECT_FALSE(HasLine(strokes, cutLeft, cutRight));
}

// What is covered all over is not looked at, which a slit must end, and the wish for hidden lines.
TEST(LineArt, LooksThroughSlitsAndBehindWhatCovers) {
    const auto outlines = [](double slit, LineKind kind) {
        ArtStage stage;
        stage.Rule().withHidden = kind == LineKind::Hidden;
        stage.Add(Box({-100, -80, 20}, {0.05, 80, 30}));
        stage.Add(Box({0.05 + slit, -80, 20}, {100, 80, 30}));
        stage.Add(Box({-50, -5, -5}, {50, 5, 5}));
        const auto strokes = stage.Strokes();
        return std::count_if(strokes.begin(), strokes.end(), [kind](const Stroke& stroke) {
            const bool isRod = std::abs(stroke.from.y - 150) < 6 && std::abs(stroke.to.y - 150) < 6;
            return isRod && stroke.kind == kind;
        });
    };
    EXPECT_EQ(outlines(0.0, LineKind::Outline), 0);
    EXPECT_EQ(outlines(1.3, LineKind::Outline), 2) << "its two sides in the slit";
    EXPECT_EQ(outlines(0.0, LineKind::Hidden), 4);
}

// The faces of a slab in two halves, and of two plates laid into each other, are seen by chance.
TEST(LineArt, NeitherSpecklesNorDoublesWherePartsCoincide) {
    ArtStage stage;
    const dg::Location tilt = Turned({0.3, 1, 0.2}, 31.7);
    stage.Add(Box({-80, -50, 0}, {0, 50, 10}), tilt);
    stage.Add(Box({0, -50, 0}, {80, 50, 10}), tilt);
    stage.Add(Box({-80, -50, 0}, {80, 50, 10.01}), tilt);
    ArtStage whole;
    whole.Add(Box({-80, -50, 0}, {80, 50, 10}), tilt);
    const auto length = [](ArtStage& each) {
        return each.LengthOf(LineKind::Outline) + each.LengthOf(LineKind::Edge) +
               each.LengthOf(LineKind::Crossing);
    };
    const dg::DVec3 across = dg::DVec3(0, 100, 0);
    const ArtPoint a = stage.PixelOf(dg::DPoint3D(0, -50, 10) * tilt);
    const ArtPoint b = stage.PixelOf(dg::DPoint3D(0, -50, 10) * tilt + across);
    EXPECT_NEAR(length(stage) - length(whole), Distance(a, b), 0.15 * Distance(a, b)) << "the joint";
}

// Of a pin as wide as its hole the rim lies now in front of the wall's facets and now behind.
TEST(LineArt, LetsNoLineFlickerInTheWallOfAHole) {
    ArtStage stage;
    stage.Add(InsideOut(Mantle(60, 200, 40)), Turned({0, 0, 1}, 3));
    stage.Add(Drum(60, 50, 24), dg::Location(dg::FMat33(), {0, 0, -40}));
    stage.LookFrom({0.0, -0.6, 1.0});
    int pieces = 0;
    for (const ArtLine& line : stage.Draw().lines) {
        const ArtPoint middle = stage.PixelOf({0, 0, 10});
        const bool isOnRim = std::all_of(line.points.begin(), line.points.end(), [&](const ArtPoint& p) {
            return std::abs(std::hypot(p.x - middle.x, (p.y - middle.y) * std::sqrt(1.36)) - 60.0) < 1.5;
        });
        pieces += isOnRim ? 1 : 0;
    }
    EXPECT_GE(pieces, 1);
    EXPECT_LE(pieces, 3);
}

// At full width the lines of small parts would leave nothing but black.
TEST(LineArt, DrawsSmallPartsFiner) {
    ArtStage stage;
    stage.Add(Box({-100, -60, 0}, {20, 60, 10}));
    stage.Add(Box({80, -3, 0}, {86, 3, 10}));
    std::vector<int> fineness;
    for (const ArtLine& line : stage.Draw().lines) fineness.push_back(line.fineness);
    EXPECT_THAT(fineness, ::testing::UnorderedElementsAre(0, 3));
}

// The thick line is the part's against what it is not.
TEST(LineArt, DrawsAPartInFrontOfItselfWithThinLines) {
    const ShapePtr back = Box({-80, -50, -20}, {80, 50, 0});
    const ShapePtr front = Box({-20, -20, 10}, {20, 20, 20});
    std::vector<float> positions(back->GetPositions().begin(), back->GetPositions().end());
    std::vector<std::uint32_t> indices(back->GetIndices().begin(), back->GetIndices().end());
    const auto first = static_cast<std::uint32_t>(positions.size() / 3);
    positions.insert(positions.end(), front->GetPositions().begin(), front->GetPositions().end());
    for (const std::uint32_t index : front->GetIndices()) indices.push_back(first + index);
    ArtStage stage;
    stage.Add(ShapePtr(new zrg::Shape(positions, indices)));
    EXPECT_NEAR(stage.LengthOf(LineKind::Outline), 2.0 * (160 + 100), 1.0);
    EXPECT_NEAR(stage.LengthOf(LineKind::Edge), 4.0 * 40, 1.0);
}

// Looked at through a glass: a magnified window of the view, with most of the model outside.
TEST(LineArt, EndsAtTheBorderOfThePicture) {
    ArtStage stage;
    stage.Add(Box({-100, -60, 0}, {100, 60, 10}));
    stage.SetCamera(stage.Camera().Magnified({300, 90, 0}, {200, 150, 0}, 25.0));
    const auto strokes = stage.Strokes();
    ASSERT_EQ(strokes.size(), 2U);
    for (const Stroke& stroke : strokes) {
        for (const ArtPoint& end : {stroke.from, stroke.to}) {
            EXPECT_TRUE(end.x > -10 && end.x < 410 && end.y > -10 && end.y < 310) << end.x << ' ' << end.y;
        }
    }
}

}  // namespace
}  // namespace zrsheet::test
