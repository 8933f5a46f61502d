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

TEST_F(InsetTest, LooksWhereTheMainViewLooksNow) {
    const auto view = m_inset->GetInsetView();
    ASSERT_TRUE(view);
    EXPECT_EQ(view->GetShapeScene(), m_scene);
    LookFrom(10, 0);
    dg::Camera3D camera;
    m_inset->GetInsetView()->GetCamera(camera);
    const dg::DPoint3D pixel = dg::DPoint3D(20, -10, 0) * camera.GetWorldToPixel();
    EXPECT_NEAR(pixel.x, 50, 1e-6);
    EXPECT_NEAR(pixel.y, 40, 1e-6);
}

TEST_F(InsetTest, MagnifiesNothingWithoutAMainView) {
    const InsetPtr inset(new Inset(nullptr, {{0, 0, 0}, {0, 0, 0}, 10, 2.0F}));
    dg::Camera3D camera;
    dg::DPoint3D pixel;
    EXPECT_FALSE(inset->GetInsetView());
    EXPECT_FALSE(inset->GetMagnifierCamera(camera));
    EXPECT_FALSE(inset->GetObjectPtToScreenPt(dg::DPoint3D(), pixel));
}

TEST_F(InsetTest, TellsItsObserversWhatTheUserDoes) {
    const du::SmartPtr<Recorder> recorder(new Recorder);
    m_inset->RegisterObserver(recorder);
    m_inset->Displace(dg::DVec3(5, 0, 0), true);
    m_inset->SetRadius(20);
    m_inset->SetFactor(4.0F, false);
    m_inset->SetFactor(2.0F, true);
    EXPECT_EQ(recorder->m_heard, "moved 5* bounds 3->4 4->2* ");
    ExpectNear(m_inset->GetMagPixelPosition(), 55, 40, 0);
    m_inset->UnregisterObserver(recorder);
    m_inset->SetRadius(10);
    EXPECT_EQ(recorder->m_heard, "moved 5* bounds 3->4 4->2* ");
}

TEST_F(InsetTest, KnowsWhichCalloutsLeadThroughIt) {
    const du::SmartPtr<Callout> attached(new Callout);
    const du::SmartPtr<Callout> other(new Callout);
    EXPECT_EQ(du::DynamicCast<Inset>(m_inset->AttachCallout(attached)), m_inset);
    EXPECT_TRUE(m_inset->IsAttached(*attached));
    EXPECT_FALSE(m_inset->IsAttached(*other));
}

TEST_F(InsetTest, TellsTheSceneWhenItIsShownOrHidden) {
    class Counter : public zrk::SceneObserver {
    public:
        void OnAnnotationModified(const du::SmartPtr<zrk::Annotation>&, bool) override { ++m_count; }
        int m_count = 0;
    };
    const du::SmartPtr<Counter> counter(new Counter);
    m_scene->RegisterObserver(counter);
    du::SmartPtr<zrk::AnnoSet> annoSet;
    m_scene->GetAnnoSet(annoSet);
    annoSet->AddAnnotationToSet(m_inset, nullptr);
    m_inset->SetVisible(false);
    EXPECT_FALSE(m_inset->IsVisible());
    EXPECT_EQ(counter->m_count, 1);
}

}  // namespace
}  // namespace zrannotations
