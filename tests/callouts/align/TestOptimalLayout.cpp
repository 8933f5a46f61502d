#include "callouts/align/OptimalLayout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "tests/callouts/EngineFixture.h"

namespace zrcallouts {
namespace {

/// A box of 2 units around the view's middle covers 190 to 210 by 140 to 160 pixels.
class OptimalLayoutTest : public EngineFixture {
protected:
    OptimalLayoutTest() { m_template = MakeTemplate({Literal("x")}); }

    CalloutPtr On(const Part& part) { return AddCallout(m_template, part); }
    bool Arrange(const CalloutVec& callouts, const du::SmartPtr<zrk::Operation>& operation = nullptr) {
        const du::SmartPtr<OptimalLayout> layout(
            new OptimalLayout(m_engine, m_view, m_rules, [](const auto&) { return LabelForm(); }));
        return layout->Execute(callouts, operation);
    }
    std::string Place(const CalloutPtr& callout) const {
        du::SmartPtr<zrk::ShapeView> view = m_view;
        const dg::DPoint3D p = callout->GetLabelRelativeScreenPosition(view);
        return std::to_string(std::lround(p.x)) + "," + std::to_string(std::lround(p.y));
    }

    TemplatePtr m_template;
    LayoutRules m_rules;
};

TEST_F(OptimalLayoutTest, PlacesLabelsBesideWhatTheyPointAt) {
    const Part left = AddPart("left", {-4, 0, 0});
    const Part right = AddPart("right", {4, 0.5, 0});
    const CalloutPtr a = On(left);
    const CalloutPtr b = On(right);
    ASSERT_TRUE(Arrange({a, b}));
    // The model covers 150 to 250 by 135 to 160; labels of 26 pixels stand 17 off.
    EXPECT_EQ(Place(a), "120,149");
    EXPECT_EQ(Place(b), "239,105");
}

TEST_F(OptimalLayoutTest, OneUndoTakesAllMovesBack) {
    const CalloutPtr a = On(AddPart("a", {-4, 0, 0}));
    const CalloutPtr b = On(AddPart("b", {4, 0, 0}));
    const std::string before = Place(a) + " " + Place(b);
    const auto entries = m_scene->GetHistory().GetUndoCount();
    ASSERT_TRUE(Arrange({a, b}, MakeOperation()));
    const std::string after = Place(a) + " " + Place(b);
    ASSERT_NE(after, before);
    EXPECT_EQ(m_scene->GetHistory().GetUndoCount(), entries + 1);
    m_scene->GetHistory().Undo();
    EXPECT_EQ(Place(a) + " " + Place(b), before);
    m_scene->GetHistory().Redo();
    EXPECT_EQ(Place(a) + " " + Place(b), after);
}

// A callout that is not arranged stays, and so does its room; so does that of an inset.
TEST_F(OptimalLayoutTest, KeepsOffWhatIsNotArranged) {
    const Part part = AddPart("part", {0, 0, 0});
    const CalloutPtr a = On(part);
    ASSERT_TRUE(Arrange({a}));
    const std::string best = Place(a);
    const CalloutPtr b = On(AddPart("behind", {0, 0, -3}));
    ASSERT_TRUE(Arrange({b}));
    EXPECT_EQ(Place(a), best);
    EXPECT_NE(Place(b), best);
    AddInset(200, 150)->Displace({-80, 0, 0}, false);
    ASSERT_TRUE(Arrange({a, b}));
    for (const CalloutPtr& callout : {a, b}) {
        du::SmartPtr<zrk::ShapeView> view = m_view;
        EXPECT_GT(callout->GetLabelRelativeScreenPosition(view).x, 130.0) << "on the glass";
    }
}

TEST_F(OptimalLayoutTest, KeepsLabelsAtTheirPixelThatStayThere) {
    const CalloutPtr a = On(AddPart("a", {0, 0, 0}));
    a->SetMarkupLabelPosition({-9, 0, 0});
    a->SetLabelScreenSpaceMode(m_view);
    ASSERT_TRUE(Arrange({a}));
    EXPECT_TRUE(a->IsLabelInScreenSpace());
    EXPECT_EQ(Place(a), "160,150");
}

TEST_F(OptimalLayoutTest, DoesNothingWithoutEngineOrView) {
    const auto forms = [](const auto&) { return LabelForm(); };
    const du::SmartPtr<OptimalLayout> noEngine(new OptimalLayout(nullptr, m_view, m_rules, forms));
    const du::SmartPtr<OptimalLayout> noView(new OptimalLayout(m_engine, nullptr, m_rules, forms));
    EXPECT_FALSE(noEngine->Execute({}, nullptr));
    EXPECT_FALSE(noView->Execute({}, nullptr));
}

}  // namespace
}  // namespace zrcallouts
