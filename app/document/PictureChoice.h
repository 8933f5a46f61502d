// How the author wants the model to be drawn.

#pragma once

#include <array>
#include <string_view>

namespace zrsheet {

enum class PictureMode {
    Line,    // lines on white parts, nothing but vectors
    Shaded,  // a raster of softly shaded parts with their edges
    Both,    // lines over shaded parts
};

/// In the order of the enumeration.
inline constexpr std::array<std::string_view, 3> kPictureWords{"line", "shaded", "both"};

/// Millimetres.
inline constexpr double kLeastOutline = 0.05;
inline constexpr double kMostOutline = 5.0;

struct PictureChoice {
    PictureMode mode = PictureMode::Line;
    bool hidden = false;   // covered lines too, dashed
    double outline = 0.5;  // width of outlines, millimetres on paper; other lines are half as wide

    friend bool operator==(const PictureChoice&, const PictureChoice&) = default;
};

}  // namespace zrsheet
