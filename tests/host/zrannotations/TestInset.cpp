#include "zrannotations/Inset.h"

#include "tests/host/zrannotations/PartsTest.h"
#include "zrannotations/Callout.h"
#include "zrk/annotation/AnnoSet.h"

namespace zrannotations {
namespace {

using InsetPtr = du::SmartPtr<Inset>;

class InsetTest : public PartsTest {
protected:
    /// What lies at (110, 90) is shown at (50, 40), three times as large, in a disc of 30.
    InsetTest() : m_inset(new Inset(m_view, {{110, 90, 0}, {50, 40, 0}, 30, 3.0F})) {}

    const InsetPtr m_inset;
};

class Recorder : public InsetObserver {
public:
    void OnInsetDisplaced(const dg::DVec3& by, bool temporary) override {
        m_heard += "moved " + std::to_string(static_cast<int>(by.x)) + (temporary ? "* " : " ");
    }
    void OnInsetBoundsChanged() override { m_heard += "bounds "; }
    void OnMagnifierChanged(float from, float to, bool temporary) override {
        m_heard += std::to_string(static_cast<int>(from)) + "->" + std::to_string(static_cast<int>(to)) +
                   (temporary ? "* " : " ");
    }
    std::string m_heard;
};

TEST_F(InsetTest, ShowsPointsMagnifiedInsideItsDisc) {
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
        EXPECT_EQ(m_inset->GetObjectPtToScreenPt(row.world, pixel), row.isInside);
        EXPECT_NEAR(pixel.x, row.x, 1e-6);
        EXPECT_NEAR(pixel.y, row.y, 1e-6);
    }
    ExpectNear(m_inset->GetMagPixelPosition(), 50, 40, 0);
}

}  // namespace
}  // namespace zrannotations
