#include "zrannotations/Inset.h"

#include "tests/callouts/EngineFixture.h"

namespace zrcallouts {
namespace {

/// Two parts, one inside and one outside what the glass shows.
class InsetObserving : public EngineFixture {
protected:
    InsetObserving() : m_inside(AddPart("inside", {0, 0, 0})), m_outside(AddPart("outside", {-6, 0, 0})) {}

    /// Leads through the inset to the part, its label off the anchor.
    CalloutPtr Through(const InsetPtr& inset, const Part& part) {
        const auto callout = MakeCallout(m_literal, part);
        callout->SetInsetAtPos(inset, 0);
        callout->SetLabelPosition({3, 2, 1});
        Show(callout);
        return callout;
    }

    static dg::DPoint3D Pixel(const CalloutPtr& callout) {
        du::SmartPtr<zrk::ShapeView> view;
        return callout->GetLabelRelativeScreenPosition(view);
    }

    /// Where the label's stored place puts it on the screen, whatever pixel it is pinned to.
    dg::DPoint3D StoredPixel(const CalloutPtr& callout) const {
        dg::DPoint3D world;
        EXPECT_TRUE(callout->GetMarkupLabelPosition(world));
        dg::Camera3D camera;
        m_view->GetCamera(camera);
        return world * camera.GetWorldToPixel();
    }

    /// The label is drawn at the pixel, and its stored place says the same.
    void ExpectAt(const CalloutPtr& callout, double x, double y) const {
        for (const auto& pixel : {Pixel(callout), StoredPixel(callout)}) {
            EXPECT_NEAR(pixel.x, x, 1e-3);
            EXPECT_NEAR(pixel.y, y, 1e-3);
        }
    }

    const Part m_inside;
    const Part m_outside;
    const TemplatePtr m_literal = MakeTemplate({Literal("x")});
};

TEST_F(InsetObserving, BoundsAndWindowClipLeadersToTheGlass) {
    const auto inset = AddInset(200, 150);
    const auto inside = Through(inset, m_inside);
    const auto outside = Through(inset, m_outside);
    const auto plain = AddCallout(m_literal, m_outside);
    EXPECT_FALSE(outside->IsHiddenAtPos(0));
    inset->SetRadius(61);
    EXPECT_FALSE(inside->IsHiddenAtPos(0));
    EXPECT_TRUE(outside->IsHiddenAtPos(0));
    inset->SetRadius(1000);
    EXPECT_FALSE(outside->IsHiddenAtPos(0));
    const auto other = AddInset(200, 150);
    const auto byWindow = Through(other, m_outside);
    EXPECT_FALSE(byWindow->IsHiddenAtPos(0));
    m_view->Resize(410, 300);
    EXPECT_TRUE(byWindow->IsHiddenAtPos(0));
    EXPECT_FALSE(inside->IsHiddenAtPos(0));
    EXPECT_FALSE(plain->IsHiddenAtPos(0)) << "a leader without inset is never clipped";
}

TEST_F(InsetObserving, LabelsMoveAlongWithTheGlassAndArePinnedThere) {
    const auto inset = AddInset(200, 150);
    // Turned and stretched: the label's frame takes the part's place and stretching, not its turn.
    m_scene->SetLocation(m_inside.shape, {dg::FMat33({0, 2, 0, -2, 0, 0, 0, 0, 2}), {1, 2, 0}});
    const auto callout = Through(inset, m_inside);
    const auto plain = AddCallout(m_literal, m_inside);
    const auto before = Pixel(callout);
    const auto plainBefore = Pixel(plain);
    inset->Displace({25, -10, 0}, true);
    EXPECT_FALSE(callout->IsLabelInScreenSpace()) << "nothing while the glass is being dragged";
    ExpectAt(callout, before.x, before.y);
    for (const int times : {1, 2}) {
        inset->Displace({25, -10, 0}, false);
        ExpectAt(callout, before.x + 25 * times, before.y - 10 * times);
        EXPECT_TRUE(callout->IsLabelInScreenSpace());
    }
    ExpectAt(plain, plainBefore.x, plainBefore.y);
}

TEST_F(InsetObserving, LabelsKeepTheirPlaceRelativeToWhatIsMagnified) {
    const auto inset = AddInset(200, 150);
    const auto callout = Through(inset, m_inside);
    const auto before = Pixel(callout);
    inset->SetFactor(8.0F, true);
    ExpectAt(callout, before.x, before.y);
    inset->SetFactor(16.0F, false);
    const double x = 300 + 2 * (before.x - 300);
    const double y = 80 + 2 * (before.y - 80);
    ExpectAt(callout, x, y);
    EXPECT_TRUE(callout->IsLabelInScreenSpace());
    inset->SetFactor(0.0F, true);
    inset->SetFactor(5.0F, false);
    ExpectAt(callout, x, y);
}

}  // namespace
}  // namespace zrcallouts
