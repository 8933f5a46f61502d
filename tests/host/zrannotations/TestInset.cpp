#include "zrannotations/Inset.h"

#include "tests/host/zrannotations/PartsTest.h"

namespace zrannotations {
namespace {

class InsetTest : public PartsTest {};

TEST_F(InsetTest, ShowsPointsMagnifiedInsideItsDisc) {
    // What lies at (110, 90) is shown at (50, 40), three times as large, in a disc of 30.
    const du::SmartPtr<Inset> inset(new Inset(m_view, {{110, 90, 0}, {50, 40, 0}, 30, 3.0F}));
    const struct {
        dg::DPoint3D world;
        double x;
        double y;
        bool isInside;
    } rows[] = {{{10, -10, 0}, 50, 40, true},
                {{19, -10, 0}, 77, 40, true},
                {{10, -19, 0}, 50, 67, true},
                {{21, -10, 0}, 83, 40, false},
                {{17, -18, 0}, 71, 64, false}};
    for (const auto& row : rows) {
        dg::DPoint3D pixel;
        EXPECT_EQ(inset->GetObjectPtToScreenPt(row.world, pixel), row.isInside);
        EXPECT_NEAR(pixel.x, row.x, 1e-6);
        EXPECT_NEAR(pixel.y, row.y, 1e-6);
    }
    ExpectNear(inset->GetMagPixelPosition(), 50, 40, 0);
}

}  // namespace
}  // namespace zrannotations
