#include "callouts/align/Layout.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/callouts/EngineFixture.h"

namespace zrcallouts {
namespace {

class LayoutTest : public EngineFixture {
protected:
    bool Arrange(const CalloutVec& callouts) {
        return Layout(m_engine, m_view).Execute({callouts.begin(), callouts.end()});
    }
    std::string PlaceAlone(double x, double y) {
        const auto callout = MakeLabelAt(x, y);
        EXPECT_TRUE(Arrange({callout}));
        return PixelOf(callout);
    }
};

/// One box in the middle: it covers 190 to 210 by 140 to 160, so that the labels' frame is 160 to 240 by 110
/// to 190.
class LayoutAroundABox : public LayoutTest {
protected:
    const Part m_box = AddPart("box", {0, 0, 0});
};

TEST_F(LayoutAroundABox, SendsEveryLabelToTheNearestSide) {
    const struct {
        double x;
        double y;
        const char* place;
    } rows[] = {
        {170, 148, "160,148"}, {230, 152, "240,152"}, {195, 115, "195,110"}, {205, 185, "205,190"},
        {20, 150, "20,110"},   {200, 290, "160,290"},  // from outside too, along one axis only
        {170, 120, "160,120"}, {230, 180, "240,180"},  // as near to both: to the upright side
        {200, 150, "160,150"}, {200, 149, "200,110"},  // the middle goes to the lesser side
    };
    for (const auto& row : rows) EXPECT_EQ(PlaceAlone(row.x, row.y), row.place) << row.x << "," << row.y;
}

TEST_F(LayoutAroundABox, SpacesTheLabelsOfASideFromTheLeastOn) {
    const CalloutVec left{MakeLabelAt(165, 150), MakeLabelAt(165, 140), MakeLabelAt(165, 145)};
    const CalloutVec top{MakeLabelAt(205, 115), MakeLabelAt(195, 115)};
    const CalloutVec alone{MakeLabelAt(238, 150)};
    CalloutVec all = left;
    all.insert(all.end(), top.begin(), top.end());
    all.push_back(alone[0]);
    ASSERT_TRUE(Arrange(all));
    EXPECT_EQ(PixelOf(left[1]), "160,140");
    EXPECT_EQ(PixelOf(left[2]), "160,170");
    EXPECT_EQ(PixelOf(left[0]), "160,200");
    EXPECT_EQ(PixelOf(top[1]), "195,110");
    EXPECT_EQ(PixelOf(top[0]), "225,110");
    EXPECT_EQ(PixelOf(alone[0]), "240,150");
    EXPECT_EQ(UndoCount(), 0U);
}

TEST_F(LayoutAroundABox, LeavesALabelWhosePartIsGoneButCountsItOnItsSide) {
    const CalloutPtr lost(new zrannotations::Callout);
    lost->ConnectLeader(new zrannotations::CalloutLeader(dg::DPoint3D(), "gone"));
    lost->SetLabelPosition({7, 7, 7});
    ASSERT_TRUE(Arrange({lost}));
    EXPECT_EQ(lost->GetPosition(), dg::DPoint3D(7, 7, 7));
}

TEST_F(LayoutTest, KeepsLabelsInTheWindowAroundALargeModelOrNone) {
    for (const bool hasModel : {false, true}) {
        SCOPED_TRACE(hasModel);
        EXPECT_EQ(PlaceAlone(60, 150), "30,150");
        EXPECT_EQ(PlaceAlone(340, 160), "370,160");
        EXPECT_EQ(PlaceAlone(190, 40), "190,30");
        EXPECT_EQ(PlaceAlone(190, 260), "190,270");
        AddPart("lower left", {-30, -30, 0});
        AddPart("upper right", {30, 30, 0});
    }
}

}  // namespace
}  // namespace zrcallouts
