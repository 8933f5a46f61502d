// Matrices, locations and boxes: whatever moves points must agree on the order of factors and on row vectors.

#include <gtest/gtest.h>

#include <cstddef>
#include <random>

#include "dg/DMat44.h"
#include "dg/DPoint3D.h"
#include "dg/FBox.h"
#include "dg/FMat44.h"
#include "dg/Location.h"

namespace dg {
namespace {

constexpr double kTolerance = 1e-9;

void ExpectNear(const DPoint3D& a, const DPoint3D& b, double tolerance = kTolerance) {
    EXPECT_NEAR(a.x, b.x, tolerance);
    EXPECT_NEAR(a.y, b.y, tolerance);
    EXPECT_NEAR(a.z, b.z, tolerance);
}

/// A quarter turn about z (x goes to y), then stretched along the new axes, then moved.
const Location kTurned(FMat33({0, 2, 0, -3, 0, 0, 0, 0, 4}), DPoint3D(10, 20, 30));

TEST(DMat44, MovesRowVectorsAndDividesByW) {
    ExpectNear(DPoint3D(1, 0, 0) * kTurned, DPoint3D(10, 22, 30));
    ExpectNear(DPoint3D(0, 1, 0) * kTurned, DPoint3D(7, 20, 30));
    ExpectNear(DPoint3D(0, 0, 1) * kTurned, DPoint3D(10, 20, 34));
    DMat44 projection;
    projection(2, 3) = 1;
    projection(3, 3) = 0;  // w = z
    ExpectNear(DPoint3D(6, 8, 2) * projection, DPoint3D(3, 4, 1));
}

TEST(DMat44, MultipliesFirstTimesSecond) {
    const DMat44 turn = kTurned.GetXform();
    const DMat44 move = Location(FMat33(), DPoint3D(1, 2, 3)).GetXform();
    const DPoint3D p(5, 6, 7);
    ExpectNear(p * (turn * move), (p * turn) * move);
    ExpectNear(p * (move * turn), (p * move) * turn);
    EXPECT_FALSE(turn * move == move * turn);
}

TEST(DMat44, InvertsRandomMatricesAndGivesUpOnFlatOnes) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> value(-10, 10);
    for (int i = 0; i < 200; ++i) {
        DMat44 matrix;
        for (std::size_t r = 0; r < 4; ++r) {
            for (std::size_t c = 0; c < 4; ++c) matrix(r, c) = value(random);
        }
        if (i % 2 == 0) matrix(0, 0) = 0;  // needs a pivot from another row
        const DMat44 product = matrix * matrix.Invert();
        for (std::size_t r = 0; r < 4; ++r) {
            for (std::size_t c = 0; c < 4; ++c)
                ASSERT_NEAR(product(r, c), r == c ? 1.0 : 0.0, 1e-6) << "matrix " << i;
        }
    }
    EXPECT_EQ(Location(FMat33::Scale({1, 1, 0}), DPoint3D()).GetXform().Invert(), DMat44::IDENTITY);
}

TEST(DMat44, TellsMirrorsByTheDeterminant) {
    EXPECT_DOUBLE_EQ(kTurned.GetXform().LinearDeterminant(), 24.0);
    EXPECT_DOUBLE_EQ(Location(FMat33::Scale({1, -1, 1}), DPoint3D(9, 9, 9)).GetXform().LinearDeterminant(),
                     -1.0);
    EXPECT_DOUBLE_EQ(
        Location(FMat33({1, 2, 3, 4, 5, 6, 7, 8, 10}), DPoint3D()).GetXform().LinearDeterminant(), -3.0);
}

TEST(Location, ReadsScaleFromRowsAndSurvivesTheWayThroughAMatrix) {
    EXPECT_EQ(kTurned.GetScale(), FVec3(2, 3, 4));
    EXPECT_EQ(Location(kTurned.GetXform()), kTurned);
}

// Positions are double: a part that is far out must not be rounded to the nearest float.
TEST(Location, KeepsFarPositionsExact) {
    const Location far(FMat33(), DPoint3D(1e9 + 0.25, 0, 0));
    EXPECT_EQ((DPoint3D(0.5, 0, 0) * far).x, 1e9 + 0.75);
}

TEST(FBox, EnclosesWhatItIsGivenAndNothingElse) {
    FBox box;
    EXPECT_TRUE(box.IsEmpty());
    box.Enclose(FPoint3D(-1, -2, -3));  // all below zero: the box must not reach to the origin
    EXPECT_EQ(box.min, box.max);
    box.Enclose(FPoint3D(-4, 5, -3));
    const FBox two = box;
    box.Enclose(FBox::EMPTY);
    EXPECT_EQ(box, two);
    FBox other;
    other.Enclose(box);
    EXPECT_EQ(other, two);
    EXPECT_EQ(two.min, FPoint3D(-4, -2, -3));
    EXPECT_EQ(two.max, FPoint3D(-1, 5, -3));
}

TEST(FBox, MovesAllEightCornersByLocationAndMatrixAlike) {
    const FBox box{FPoint3D(1, 2, 3), FPoint3D(4, 6, 8)};
    const FBox expected{FPoint3D(-8, 22, 42), FPoint3D(4, 28, 62)};
    EXPECT_EQ(box * kTurned, expected);
    EXPECT_EQ(box * FMat44(kTurned.GetXform()), expected);
    EXPECT_TRUE((FBox::EMPTY * kTurned).IsEmpty());
    EXPECT_TRUE((FBox::EMPTY * FMat44(kTurned.GetXform())).IsEmpty());
    // Sheared along x by the other two: the extreme corners are the first and the last.
    const FBox sheared = FBox{FPoint3D(-1, -1, -1), FPoint3D(1, 1, 1)} *
                         Location(FMat33({1, 0, 0, 1, 1, 0, 1, 0, 1}), DPoint3D());
    EXPECT_EQ(sheared.min, FPoint3D(-3, -1, -1));
    EXPECT_EQ(sheared.max, FPoint3D(3, 1, 1));
}

TEST(FBox, DividesByWUnderAProjection) {
    DMat44 projection;
    projection(2, 3) = 1;
    projection(3, 3) = 0;
    const FBox moved = FBox{FPoint3D(-2, -2, 1), FPoint3D(2, 2, 2)} * FMat44(projection);
    EXPECT_EQ(moved.min.x, -2.0F);  // the near face
    EXPECT_EQ(moved.max, FPoint3D(2, 2, 1));
}

}  // namespace
}  // namespace dg
