#include "callouts/align/PartOutlines.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>
#include <vector>

#include "tests/callouts/EngineFixture.h"
#include "zrg/Shape.h"
#include "zrk/scene/Shape.h"

namespace zrcallouts {
namespace {

using Pixels = std::vector<std::pair<long, long>>;

class PartOutlinesTest : public EngineFixture {
protected:
    /// Whole pixels of a ring from its leftmost, topmost corner on.
    static Pixels Corners(const std::vector<ScreenPoint>& ring) {
        Pixels corners;
        for (const auto& point : ring) corners.emplace_back(std::lround(point.x), std::lround(point.y));
        return corners;
    }
    std::vector<ModelArea> Outlines() const {
        dg::Camera3D camera;
        m_view->GetCamera(camera);
        return OutlinesOfParts(*m_scene, camera.GetWorldToPixel());
    }
};

// Corners only, each once, in one sense of rotation: what lies inside or on an edge is no corner.
TEST_F(PartOutlinesTest, AreTheCornersOfWhatIsShown) {
    const du::SmartPtr<zrg::Shape> kite(
        new zrg::Shape({-1, 0, 0, 0, 2, 0, 1, 0, 0, 0, -1, 0, 0, 0, 1, 0.5, 1, 0, -0.5, -0.5, 3},
                       {0, 1, 2, 0, 2, 3, 4, 5, 6}));
    AddPart("kite", {0, 0, 0}, nullptr, new zrk::ComponentNode("kite", new zrk::Shape(kite)));
    const Part hidden = AddPart("hidden", {9, 9, 0});
    m_scene->SetVisible(hidden.shape, false);
    AddPart("box", {-5, 3, 0});
    const auto areas = Outlines();
    ASSERT_EQ(areas.size(), 2U);
    EXPECT_EQ(Corners(areas[0].rings.front()), (Pixels{{190, 150}, {200, 130}, {210, 150}, {200, 160}}));
    EXPECT_EQ(Corners(areas[1].rings.front()), (Pixels{{140, 110}, {160, 110}, {160, 130}, {140, 130}}));
    EXPECT_EQ(std::lround(areas[0].box.y0), 130);
    EXPECT_EQ(std::lround(areas[0].box.x1), 210);
}

}  // namespace
}  // namespace zrcallouts
