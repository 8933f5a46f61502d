#include "app/sheet/BalloonForm.h"

#include <gtest/gtest.h>

#include <cmath>

#include "app/render/TextMetrics.h"

namespace zrsheet {
namespace {

using zrannotations::BalloonShape;
using zrannotations::CalloutStyle;

constexpr BalloonShape kShapes[] = {BalloonShape::Round, BalloonShape::Hexagon, BalloonShape::Box,
                                    BalloonShape::None, BalloonShape::Split};

/// How far the point lies inside the balloon: from its outline inwards, negative outside.
double DepthIn(BalloonShape shape, const PageBox& box, const PagePoint& point) {
    const double radius = 0.5 * (box.y1 - box.y0);
    if (shape == BalloonShape::Round || shape == BalloonShape::Split) {
        const double x = std::clamp(point.x, box.x0 + radius, box.x1 - radius);
        return radius - std::hypot(point.x - x, point.y - box.y0 - radius);
    }
    auto corners = CornersOf(shape, box);
    if (corners.empty()) corners = CornersOf(BalloonShape::Box, box);
    double depth = 1e9;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const PagePoint& a = corners[i];
        const PagePoint& b = corners[(i + 1) % corners.size()];
        const double turn = (b.x - a.x) * (point.y - a.y) - (b.y - a.y) * (point.x - a.x);
        depth = std::min(depth, turn / std::hypot(b.x - a.x, b.y - a.y));
    }
    return depth;
}

TEST(BalloonForm, HoldsItsTextWhateverItsShape) {
    for (const char* label :
         {"1", "128", "Hex Bolt M10x36", "12\n4x", "1\nHex Bolt M10x36", "a\nb\nWasher", ""}) {
        for (const BalloonShape shape : kShapes) {
            const CalloutLook look{shape, 20.0, 1.25};
            const auto lines = LabelLines(label, shape);
            const auto [width, height] = SizeOf(look, lines);
            const PageBox box{0, 0, width, height};
            for (std::size_t i = 0; i < lines.size(); ++i) {
                const double x = 0.5 * TextWidth(lines[i], look.fontSize);
                const double y = 0.5 * height + LineOffset(look, i, lines.size());
                const double rise = 0.5 * CapHeight(look.fontSize);
                for (const PagePoint corner : {PagePoint{0.5 * width - x, y - rise},
                                               {0.5 * width + x, y + rise},
                                               {0.5 * width - x, y + rise},
                                               {0.5 * width + x, y - rise}})
                    EXPECT_GT(DepthIn(shape, box, corner), 2.0) << label << " in " << static_cast<int>(shape);
            }
        }
    }
    EXPECT_EQ(LabelLines("a\nb\nc", BalloonShape::Split), (std::vector<std::string>{"a", "b c"}));
}

// Anchors all around; a leader that crossed its own text could not be read.
TEST(BalloonForm, LeadersLeaveOnTheOutlineAndStayOffTheText) {
    const PageBox box{100, 100, 160, 130};
    for (const BalloonShape shape : kShapes) {
        const zrcallouts::LabelForm form{box.x1 - box.x0, box.y1 - box.y0, shape};
        for (int degrees = 0; degrees < 360; degrees += 7) {
            const double turn = degrees * 0.017453292519943295;
            const PagePoint anchor{130 + 90 * std::cos(turn), 115 + 90 * std::sin(turn)};
            const PagePoint end = LeaderEnd(form, box, anchor);
            SCOPED_TRACE(std::to_string(static_cast<int>(shape)) + " at " + std::to_string(degrees));
            EXPECT_NEAR(DepthIn(shape, box, end), 0.0, 1e-9);
            const PagePoint next{end.x + 0.01 * (anchor.x - end.x), end.y + 0.01 * (anchor.y - end.y)};
            EXPECT_LT(DepthIn(shape, box, next), 0.0);
        }
        if (shape == BalloonShape::None) continue;
        const PagePoint inside = LeaderEnd(form, box, {131, 117});
        EXPECT_EQ(inside.x, 131) << "no leader is left";
        EXPECT_EQ(inside.y, 117);
    }
}

TEST(BalloonForm, TheCalloutsOwnStyleBeatsTheDocuments) {
    const SheetStyle usual;
    const CalloutStyle ofDocument{BalloonShape::Box, {}, 20.0, 2.0};
    const struct {
        CalloutStyle own;
        CalloutStyle ofDocument;
        const char* label;
        CalloutLook look;
    } rows[] = {{{}, {}, "1", {BalloonShape::Round, usual.fontSize, usual.balloonWidth}},
                {{}, {}, "1\n2", {BalloonShape::Split, usual.fontSize, usual.balloonWidth}},
                {{}, ofDocument, "1\n2", {BalloonShape::Box, 20.0, 2.0}},
                {{BalloonShape::Round, {}, {}, 3.0}, ofDocument, "1\n2", {BalloonShape::Round, 20.0, 3.0}}};
    for (const auto& row : rows) {
        const CalloutLook look = LookOf(row.own, row.ofDocument, usual, row.label);
        EXPECT_EQ(look.shape, row.look.shape);
        EXPECT_EQ(look.fontSize, row.look.fontSize);
        EXPECT_EQ(look.lineWidth, row.look.lineWidth);
    }
}

}  // namespace
}  // namespace zrsheet
