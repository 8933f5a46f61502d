#include "app/sheet/Solids.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/app/document/AssemblyMaker.h"
#include "zrkapp/illustration/HostSession.h"

namespace zrsheet {
namespace {

using ::testing::ElementsAre;

TEST(Solids, ShareShapesAndLeaveOutWhatIsHidden) {
    const zrkapp::illustration::HostSession session(1);
    Assembly assembly = PinsAndPlate();
    assembly.nodes[2].color = {1.0F, 0.0F, 0.0F};
    const Document document(std::move(assembly), Document::Settings());
    const auto all = SolidsOf(document, *document.Scene()->GetPickScene());
    ASSERT_EQ(all.size(), 3U);
    EXPECT_EQ(all[0].shape, all[2].shape);
    EXPECT_NE(all[0].shape, all[1].shape);
    EXPECT_EQ(all[2].toWorld(3, 0), 5.0);
    EXPECT_EQ(all[2].color, "#ff0000");
    document.Scene()->SetVisible(document.FindShapes({"Plate"}).at(0), false);
    std::vector<std::string> ids;
    for (const SheetSolid& solid : SolidsOf(document, *document.Scene()->GetPickScene()))
        ids.push_back(solid.id);
    EXPECT_THAT(ids, ElementsAre("part-1-1", "part-1-2"));
}

// A model that begins upside down or mirrored would agree with nothing that the drawing shows.
TEST(Solids, AreLookedAtAsThePictureLooks) {
    const auto camera = dg::Camera3D::Orthographic({3, 4, 5}, {0, -1, 0}, {0, 0, 1}, 7.0, 400, 300, 20.0);
    const SheetCamera seen = CameraOf(camera);
    EXPECT_NEAR(seen.look[0], 0.0, 1e-9);
    EXPECT_LT(seen.look[1], 0.0);
    EXPECT_NEAR(seen.look[2], 0.0, 1e-9);
    EXPECT_NEAR(seen.up[1], 0.0, 1e-9);
    EXPECT_GT(seen.up[2], 0.0);
}

}  // namespace
}  // namespace zrsheet
