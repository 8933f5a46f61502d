#include "app/sheet/ScenePictures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "app/document/Document.h"
#include "app/sheet/CalloutPlates.h"
#include "app/sheet/Hotspots.h"
#include "tests/app/document/AssemblyMaker.h"
#include "zrannotations/Inset.h"
#include "zrkapp/illustration/HostSession.h"

namespace zrsheet {
namespace {

using zrannotations::Terminator;
using InsetPtr = du::SmartPtr<zrannotations::Inset>;

constexpr PageBox kFigure{50, 20, 370, 260};
const dg::DPoint3D kGlassCentre(260.5, 60.25, 0);
constexpr double kRadius = 40.0;
constexpr float kFactor = 4.0F;

Assembly TwoBoxes() {
    AssemblyMaker maker;
    const int box = maker.Box("Box", 10, 10, 10);
    const int pin = maker.Box("Pin", 1, 1, 1);
    maker.Node("Box", -1, box);
    maker.Node("Pin", -1, pin, {12, 0, 0});
    return maker.Get();
}

/// Two parts seen from the front, a callout to each, and glasses in the free corner.
class ScenePictures : public ::testing::Test {
protected:
    ScenePictures() {
        m_document.Model().LookAt(ParseViewDirection("front"), 320, 240, 80.0);
        m_document.CreateCallouts({}, {});
        m_document.Settle();
    }

    InsetPtr AddInset(const dg::DPoint3D& source) {
        const InsetPtr inset(
            new zrannotations::Inset(m_document.View(), {source, kGlassCentre, kRadius, kFactor}));
        AnnoSet()->AddAnnotationToSet(inset, nullptr);
        return inset;
    }
    du::SmartPtr<zrk::AnnoSet> AnnoSet() const {
        du::SmartPtr<zrk::AnnoSet> annoSet;
        m_document.Scene()->GetAnnoSet(annoSet);
        return annoSet;
    }
    std::vector<SheetInset> Insets(PictureMode mode, const PictureStyle& style = {}) const {
        const auto scene = m_document.Scene()->GetPickScene();
        return InsetsOf(*AnnoSet(), ScenePainter(*scene, {mode}, style, 1), kFigure,
                        [&](auto areas) { return HotspotsOf(m_document, *scene, std::move(areas)); });
    }
    CalloutPlates PlatesOf(unsigned threads) const {
        CalloutPlates plates(m_document.Callouts(), m_document.Style(), kFigure, {});
        plates.EndLeaders(*m_document.Scene()->GetPickScene(), threads);
        return plates;
    }
    SheetCallout Plate(const std::string& label) const {
        auto plates = PlatesOf(1).Take();
        return *std::find_if(plates.begin(), plates.end(),
                             [&](const SheetCallout& plate) { return plate.label == label; });
    }
    /// In the view.
    static dg::DPoint3D AnchorOf(const SheetCallout& plate) {
        const PagePoint anchor = plate.leaders.at(0).anchor;
        return {anchor.x - kFigure.x0, anchor.y - kFigure.y0, 0.0};
    }

    zrkapp::illustration::HostSession m_session{1};
    Document m_document{TwoBoxes(), Document::Settings()};
};

bool IsWhite(const Raster& raster) {
    return std::all_of(raster.pixels.begin(), raster.pixels.end(), [](std::uint8_t v) { return v == 255; });
}

TEST_F(ScenePictures, AGlassShowsItsSourceAndLiesOnTheSamePage) {
    const SheetCallout plate = Plate("1");
    const dg::DPoint3D onPart = AnchorOf(plate);
    AddInset({5, 5, 0});
    AddInset(onPart)->SetVisible(false);
    AddInset(onPart);
    const auto insets = Insets(PictureMode::Shaded);
    ASSERT_EQ(insets.size(), 2U);
    EXPECT_EQ(insets[0].id + insets[1].id, "inset-1inset-3");
    EXPECT_TRUE(IsWhite(insets[0].picture)) << "nothing is there";
    const SheetInset& shown = insets[1];
    EXPECT_EQ(shown.glass.centre.x, kFigure.x0 + kGlassCentre.x);
    EXPECT_EQ(shown.source.centre.y, plate.leaders.at(0).anchor.y);
    EXPECT_EQ(shown.source.radius, kRadius / static_cast<double>(kFactor));
    EXPECT_EQ(shown.box.x0, kFigure.x0 + 220);
    EXPECT_EQ(shown.box.y1 - shown.box.y0, shown.picture.height);
    const auto middle =
        static_cast<std::size_t>(shown.picture.height / 2 * shown.picture.width + shown.picture.width / 2);
    EXPECT_LT(shown.picture.pixels.at(3 * middle), 255) << "the part";
    EXPECT_TRUE(shown.lines.empty());
}

// The box is 100 pixels wide or so; its corner is in the middle of the glass.
TEST_F(ScenePictures, AGlassHasLinesAsTheAuthorWantsThem) {
    dg::Camera3D camera;
    m_document.View()->GetCamera(camera);
    AddInset(dg::DPoint3D(10, 10, 10) * camera.GetWorldToPixel());
    EXPECT_TRUE(Insets(PictureMode::Line)[0].picture.pixels.empty());
    EXPECT_FALSE(Insets(PictureMode::Both)[0].picture.pixels.empty());
    for (const PictureMode mode : {PictureMode::Line, PictureMode::Both}) {
        const auto insets = Insets(mode);
        const auto corner = [](const ArtPoint& p) { return std::hypot(p.x - 40.5, p.y - 40.25) < 1.0; };
        EXPECT_TRUE(std::any_of(insets[0].lines.begin(), insets[0].lines.end(), [&](const ArtLine& line) {
            return std::any_of(line.points.begin(), line.points.end(), corner);
        }));
        ASSERT_EQ(insets[0].hotspots.size(), 1U) << "of the box; the pin is outside";
        EXPECT_EQ(insets[0].hotspots[0].id, "part-1-1");
        const auto& rings = insets[0].hotspots[0].rings;
        EXPECT_TRUE(std::any_of(rings[0].begin(), rings[0].end(), corner)) << "where the glass shows it";
    }
}

// The same place three times as large, pixel for pixel.
TEST_F(ScenePictures, AreFinerWhereTheyAreToBePrinted) {
    AddInset(AnchorOf(Plate("1")));
    PictureStyle style;
    const Raster plain = Insets(PictureMode::Both, style).at(0).picture;
    style.scale = 3.0;
    const Raster fine = Insets(PictureMode::Both, style).at(0).picture;
    ASSERT_EQ(fine.width, 3 * plain.width);
    ASSERT_EQ(fine.height, 3 * plain.height);
    const auto tone = [](const Raster& raster, int x, int y) {
        return raster.pixels.at(3 * static_cast<std::size_t>(y * raster.width + x));
    };
    int different = 0;
    for (int y = 0; y < plain.height; ++y) {
        for (int x = 0; x < plain.width; ++x)
            different += std::abs(tone(plain, x, y) - tone(fine, 3 * x + 1, 3 * y + 1)) > 8;
    }
    EXPECT_LT(different, plain.width * plain.height / 50) << "but for the borders of the areas";
}

// The pin is 10 pixels wide or so: its middle is magnified into the glass, and what lies beyond is not drawn.
TEST_F(ScenePictures, ALeaderThroughAGlassEndsWhereTheGlassShowsItsEnd) {
    const SheetCallout before = Plate("2");
    const dg::DPoint3D end = AnchorOf(before);
    const auto callouts = m_document.Callouts();
    const auto callout = *std::find_if(callouts.begin(), callouts.end(),
                                       [](const auto& c) { return c->GetMarkupText().Text() == "2"; });
    callout->SetInsetAtPos(AddInset({end.x - 3, end.y + 2, 0}), 0);
    const PagePoint inside = Plate("2").leaders.at(0).anchor;
    EXPECT_NEAR(inside.x, kFigure.x0 + kGlassCentre.x + 12, 1e-3);
    EXPECT_NEAR(inside.y, kFigure.y0 + kGlassCentre.y - 8, 1e-3);
    callout->SetInsetAtPos(AddInset({end.x - 11, end.y, 0}), 0);
    EXPECT_TRUE(Plate("2").leaders.empty());
}

TEST_F(ScenePictures, ACalloutWhosePartIsHiddenKeepsItsPlaceForLater) {
    const auto shown = PlatesOf(1).Take();
    ASSERT_EQ(shown.size(), 2U);
    const auto part = m_document.Callouts()[1]->GetShapeInstanceAtPos(0);
    m_document.Scene()->SetVisible(part, false);
    CalloutPlates plates = PlatesOf(1);
    EXPECT_EQ(plates.Boxes().size(), 1U);
    EXPECT_EQ(plates.Take().size(), 1U);
    m_document.Scene()->SetVisible(part, true);
    EXPECT_EQ(PlatesOf(1).Take()[1].box.x0, shown[1].box.x0);
}

// Covered leaders keep the tone between the ink and the ground that they are seen on.
TEST_F(ScenePictures, CoveredLeadersAreDashedAndTakeOnTheGround) {
    struct Case {
        bool dashed;
        bool dim;
        dg::Color ground;
        bool visible;
        const char* color;
    };
    const Case cases[] = {
        {false, false, {1, 1, 1, 1}, true, "#000000"},
        {true, false, {1, 1, 1, 1}, false, "#000000"},
        {true, true, {1, 1, 1, 1}, false, "#999999"},
        {true, true, {1, 0.5F, 0, 1}, false, "#994d00"},
    };
    const auto callout = m_document.Callouts().front();
    for (const Case& c : cases) {
        callout->SetHiddenAsDashedAtPos(c.dashed, 0);
        callout->SetDimAtPos(c.dim, 0, c.ground);
        const SheetLeader leader = Plate("1").leaders.at(0);
        EXPECT_EQ(leader.visible, c.visible);
        EXPECT_EQ(leader.color, c.color);
    }
}

// The box is 100 pixels wide or so. What the author says beats what is seen, and his word on one callout his
// word on all.
TEST_F(ScenePictures, LeadersEndWithArrowsOnEdgesAndOutlinesUnlessToldOtherwise) {
    const auto callout = m_document.Callouts().front();
    const auto endAt = [&](double x, double y) {
        callout->SetAnchor({x, y, 10}, 0);
        return Plate("1").leaders.at(0).terminator;
    };
    EXPECT_EQ(endAt(5, 5), Terminator::Dot);
    EXPECT_EQ(endAt(9.95, 5), Terminator::Arrow) << "just inside the outline";
    EXPECT_EQ(endAt(9.4, 5), Terminator::Dot) << "some pixels off";
    EXPECT_EQ(endAt(5, 0), Terminator::Arrow);
    m_document.Model().LookAt(ParseViewDirection("-1,-1,-1"), 320, 240, 80.0);
    m_document.Settle();
    EXPECT_EQ(endAt(10, 5), Terminator::Arrow) << "between two faces that are seen";
    m_document.SetStyle({{}, Terminator::None, {}, {}});
    EXPECT_EQ(endAt(10, 5), Terminator::None);
    callout->SetStyle({{}, Terminator::Dot, {}, {}});
    EXPECT_EQ(endAt(10, 5), Terminator::Dot);
    callout->SetStyle({{}, Terminator::Auto, {}, {}});
    EXPECT_EQ(endAt(10, 5), Terminator::Arrow);
}

// What stands before a part has edges of its own, which are not the part's.
TEST_F(ScenePictures, ALeaderBesideAnEdgeOfAnotherPartEndsWithADot) {
    const auto callout = m_document.Callouts().front();
    const auto pin = m_document.FindShapes({"Pin"}).at(0);
    m_document.Scene()->SetLocation(
        pin, dg::Location(dg::DMat44({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 4, 4, 15, 1})));
    callout->SetAnchor({3.97, 4.5, 10}, 0);
    EXPECT_EQ(Plate("1").leaders.at(0).terminator, Terminator::Dot);
}

}  // namespace
}  // namespace zrsheet
