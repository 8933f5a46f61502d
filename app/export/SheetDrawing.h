// The sheet as lines, discs, balloons and texts: worked out once, painted by every exporter that draws.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/sheet/Sheet.h"

namespace zrsheet {

/// A straight line.
struct DrawnLine {
    PagePoint from;
    PagePoint to;
    double width = 0.0;
    std::string color;
    bool isDashed = false;
};

/// Filled.
struct DrawnDisc {
    PagePoint centre;
    double radius = 0.0;
    std::string color;
};

/// A circle's line.
struct DrawnRing {
    SheetCircle circle;
    double width = 0.0;
    std::string color;
};

enum class TextAlign { kLeft, kMiddle, kRight };

/// `place` is on the baseline: where the text begins, its middle or its end.
struct DrawnText {
    std::string text;  // clean
    PagePoint place;
    TextAlign align = TextAlign::kLeft;
    double size = 0.0;
    bool isBold = false;
    std::string color;
};

/// Filled, with a line around in the same colour.
struct DrawnArrow {
    std::vector<PagePoint> corners;  // the tip first
    double lineWidth = 0.0;
    std::string color;
};

/// Painted in this order: the white ones keep the black ones readable over dark edges.
struct DrawnLeader {
    DrawnLine halo;
    std::optional<DrawnDisc> dotHalo;
    std::optional<DrawnArrow> arrowHalo;
    DrawnLine line;
    std::optional<DrawnDisc> dot;
    std::optional<DrawnArrow> arrow;
};

enum class BalloonOutline {
    kRound,    // with half circles as ends; a circle when it is as wide as high
    kCorners,  // straight from corner to corner
    kNone,
};

/// White, with a line around; `rules` are painted over it.
struct DrawnBalloon {
    BalloonOutline outline = BalloonOutline::kRound;
    PageBox box;
    double radius = 0.0;             // of round ones
    std::vector<PagePoint> corners;  // of others
    std::vector<DrawnLine> rules;
    double lineWidth = 0.0;
    std::string color;
};

/// Painted in this order, the glass's picture, cut to `outline`, before the outline.
struct DrawnInset {
    std::vector<DrawnRing> sourceRings;  // around what the glass shows: the white one, then the black one
    std::vector<DrawnLine> links;        // from there to the glass; white ones first
    DrawnDisc rim;
    DrawnRing outline;
};

struct DrawnCallout {
    std::vector<DrawnLeader> leaders;
    DrawnBalloon balloon;
    std::vector<DrawnText> label;  // line by line
};

struct SheetDrawing {
    DrawnText title;
    std::vector<DrawnInset> insets;      // in the sheet's order
    std::vector<DrawnCallout> callouts;  // in the sheet's order
    std::vector<DrawnLine> tableRules;
    std::vector<DrawnText> tableTexts;
};

inline constexpr const char* kPaperColor = "#ffffff";
/// Lengths of a dash and the gap behind it, in page pixels.
inline constexpr double kDash = 5.0;
inline constexpr double kDashGap = 3.0;

[[nodiscard]] SheetDrawing DrawSheet(const Sheet& sheet);

}  // namespace zrsheet
