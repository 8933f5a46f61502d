#include "zrannotations/AnchorFinder.h"

#include <cmath>

#include "tests/host/zrannotations/PartsTest.h"

namespace zrannotations {
namespace {

class AnchorFinderTest : public PartsTest {
protected:
    /// Flat triangles at z = 0: a small one that faces the eye and a larger one that faces away, to its
    /// right.
    static ShapePtr FrontAndLargerBack() {
        return new zrg::Shape({0, 0, 0, 3, 0, 0, 0, 3, 0, 10, 0, 0, 22, 0, 0, 10, 12, 0}, {0, 1, 2, 3, 5, 4});
    }
    void CoverEverything() { AddPart("lid", Square(190), At(0, 0, 50)); }
};

TEST_F(AnchorFinderTest, EndsInTheMiddleOfWhatIsSeenOfThePart) {
    const auto part = AddPart("a", Square(40), At(0, 0, 10));
    AddPart("cover", Square(40), At(20, 0, 20));
    dg::DPoint3D anchor;
    ASSERT_TRUE(FindAnchor(*part, anchor));
    EXPECT_NEAR(anchor.x, -10, 1.5) << "half of the square is covered";
    EXPECT_LE(std::abs(anchor.y), 10.0) << "as deep inside as the half is wide";
    EXPECT_NEAR(anchor.z, 0, 1e-3) << "on the surface, in the part's own coordinates";
}

TEST_F(AnchorFinderTest, TakesTheLargestTriangleThatFacesTheEyeOfACoveredPart) {
    CoverEverything();
    const struct {
        const char* name;
        dg::FMat33 matrix;
        double x;
        double y;
    } rows[] = {
        {"as it is", dg::FMat33::IDENTITY, 1, 1},
        {"stretched", dg::FMat33::Scale({2, 3, 1}), 1, 1},
        {"mirrored, it still faces the eye", dg::FMat33::Scale({-1, 1, 1}), 1, 1},
        {"turned around, the other faces the eye", dg::FMat33({-1, 0, 0, 0, 1, 0, 0, 0, -1}), 14, 4},
    };
    for (const auto& row : rows) {
        const auto part = AddPart("b", FrontAndLargerBack(), dg::Location(row.matrix, dg::DPoint3D(0, 0, 0)));
        dg::DPoint3D anchor;
        ASSERT_TRUE(FindAnchor(*part, anchor)) << row.name;
        EXPECT_NEAR(anchor.x, row.x, 1e-6) << row.name;
        EXPECT_NEAR(anchor.y, row.y, 1e-6) << row.name;
        m_scene->RemoveShapeInstance(part);
    }
}

TEST_F(AnchorFinderTest, LeadsToTheMemberOfAnAssemblyThatIsSeenBestWhenItsOwnPartIsCovered) {
    const auto own = AddPart("own", Square(4), At(0, 0, 10));
    const auto cover = AddPart("cover", Square(20), At(0, 0, 20));
    const auto small = AddPart("small", Square(6), At(40, 0, 10));
    const auto large = AddPart("large", Square(9), At(-40, 0, 10));
    const du::SmartPtr<zrk::illustration::SbomInstance> assembly(
        new zrk::illustration::SbomInstance(du::Symbol("assembly"), "assembly"));
    for (const auto& part : {own, small, large}) {
        du::SmartPtr<zrk::Instance> instance;
        part->GetInstance(instance);
        const du::SmartPtr<zrk::illustration::SbomInstance> member(
            new zrk::illustration::SbomInstance(instance->GetIdentifier(), "member"));
        member->SetEbomInstance(instance);
        assembly->AddChild(member);
    }
    EXPECT_EQ(BestSeenPart(own, assembly), large);
    EXPECT_EQ(BestSeenPart(small, assembly), small) << "a part that is seen keeps its leader";
    EXPECT_EQ(BestSeenPart(own, nullptr), own) << "it stands for itself";
    m_scene->SetVisible(small, false);
    m_scene->SetVisible(large, false);
    EXPECT_EQ(BestSeenPart(own, assembly), own) << "nothing of the assembly is seen";
    EXPECT_TRUE(cover->IsVisible());
}

}  // namespace
}  // namespace zrannotations
