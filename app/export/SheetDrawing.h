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

/// Lines of the model that are drawn alike.
struct DrawnInk {
    std::string cssClass;  // "outline", "edge fine-1" ...
    double width = 0.0;
    bool isDashed = false;
    std::vector<const ArtLine*> lines;  // of the sheet
};

/// Over what is there, ink by ink; `origin` is where the lines' pixels count from.
struct DrawnModel {
    PagePoint origin;
    std::vector<DrawnInk> inks;
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
    DrawnModel model;                    // cut to `outline` like the picture, and above it
    std::vector<DrawnRing> sourceRings;  // around what the glass shows: the white one, then the black one
    std::vector<DrawnLine> links;        // from there to the glass; white ones first
    DrawnDisc rim;
    DrawnRing outline;
};

struct DrawnCallout {
    std::vector<DrawnLeader> leaders;
    std::vector<DrawnBalloon> balloons;  // of a stack, from the top; else one
    std::vector<DrawnText> label;        // line by line
};

/// The lines before the texts.
struct DrawnForm {
    std::vector<DrawnLine> rules;
    std::vector<DrawnText> texts;
};

/// The sheet must outlive it.
struct SheetDrawing {
    DrawnModel model;
    DrawnText title;                     // empty if the title is in the frame
    std::vector<DrawnInset> insets;      // in the sheet's order
    std::vector<DrawnCallout> callouts;  // in the sheet's order
    DrawnForm table;
    DrawnForm frame;               // with the title block
    std::vector<DrawnForm> pages;  // the further ones, frame and list
};

inline constexpr const char* kPaperColor = "#ffffff";
inline constexpr const char* kInkColor = "#000000";  // of the model's lines
/// Lengths of a dash and the gap behind it, in page pixels.
inline constexpr double kDash = 5.0;
inline constexpr double kDashGap = 3.0;
/// The same of covered lines of the model, in widths of the line.
inline constexpr double kHiddenDash = 5.0;
inline constexpr double kHiddenGap = 3.0;

[[nodiscard]] SheetDrawing DrawSheet(const Sheet& sheet);

}  // namespace zrsheet
