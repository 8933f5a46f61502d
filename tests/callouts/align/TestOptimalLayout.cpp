#include "callouts/align/OptimalLayout.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/callouts/EngineFixture.h"

namespace zrcallouts {
namespace {

/// A box of 2 units around the view's middle covers 190 to 210 by 140 to 160 pixels.
class OptimalLayoutTest : public EngineFixture {
protected:
    CalloutPtr On(const Part& part) { return AddCallout(m_template, part); }
    bool Arrange(const CalloutVec& callouts, const du::SmartPtr<zrk::Operation>& operation = nullptr) {
        const du::SmartPtr<OptimalLayout> layout(
            new OptimalLayout(m_engine, m_view, LayoutRules(), [](const auto&) { return LabelForm(); }));
        return layout->Execute(callouts, operation);
    }
    const TemplatePtr m_template = MakeTemplate({Literal("x")});
};

TEST_F(OptimalLayoutTest, PlacesLabelsBesideWhatTheyPointAt) {
    const Part left = AddPart("left", {-4, 0, 0});
    const Part right = AddPart("right", {4, 0.5, 0});
    const CalloutPtr a = On(left);
    const CalloutPtr b = On(right);
    ASSERT_TRUE(Arrange({a, b}));
    // The model covers 150 to 250 by 135 to 160; labels of 26 pixels stand 17 off.
    EXPECT_EQ(PixelOf(a), "120,149");
    EXPECT_EQ(PixelOf(b), "239,105");
}

TEST_F(OptimalLayoutTest, OneUndoTakesAllMovesBack) {
    const CalloutPtr a = On(AddPart("a", {-4, 0, 0}));
    const CalloutPtr b = On(AddPart("b", {4, 0, 0}));
    const std::string before = PixelOf(a) + " " + PixelOf(b);
    const auto entries = UndoCount();
    ASSERT_TRUE(Arrange({a, b}, MakeOperation()));
    const std::string after = PixelOf(a) + " " + PixelOf(b);
    ASSERT_NE(after, before);
    EXPECT_EQ(UndoCount(), entries + 1);
    Undo();
    EXPECT_EQ(PixelOf(a) + " " + PixelOf(b), before);
    Redo();
    EXPECT_EQ(PixelOf(a) + " " + PixelOf(b), after);
}

// A callout that is not arranged stays, and so does its room; so does that of an inset.
TEST_F(OptimalLayoutTest, KeepsOffWhatIsNotArranged) {
    const Part part = AddPart("part", {0, 0, 0});
    const CalloutPtr a = On(part);
    ASSERT_TRUE(Arrange({a}));
    const std::string best = PixelOf(a);
    const CalloutPtr b = On(AddPart("behind", {0, 0, -3}));
    ASSERT_TRUE(Arrange({b}));
    EXPECT_EQ(PixelOf(a), best);
    EXPECT_NE(PixelOf(b), best);
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
    EXPECT_EQ(PixelOf(a), "160,150");
}

TEST_F(OptimalLayoutTest, DoesNothingWithoutEngineOrView) {
    const auto forms = [](const auto&) { return LabelForm(); };
    const du::SmartPtr<OptimalLayout> noEngine(new OptimalLayout(nullptr, m_view, LayoutRules(), forms));
    const du::SmartPtr<OptimalLayout> noView(new OptimalLayout(m_engine, nullptr, LayoutRules(), forms));
    EXPECT_FALSE(noEngine->Execute({}, nullptr));
    EXPECT_FALSE(noView->Execute({}, nullptr));
}

}  // namespace
}  // namespace zrcallouts
