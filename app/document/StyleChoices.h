// What authors may choose for the look of callouts: the words and the numbers.

#pragma once

#include <array>
#include <string>
#include <string_view>

#include "app/document/PictureChoice.h"
#include "zrannotations/CalloutStyle.h"

namespace zrsheet {

/// In the order of the enumerations.
inline constexpr std::array<std::string_view, 5> kShapeWords{"round", "hexagon", "box", "none", "split"};
inline constexpr std::array<std::string_view, 4> kTerminatorWords{"auto", "dot", "arrow", "none"};

/// Pixels of the page.
inline constexpr double kLeastFontSize = 4.0;
inline constexpr double kMostFontSize = 200.0;
inline constexpr double kLeastLineWidth = 0.1;
inline constexpr double kMostLineWidth = 20.0;

/// All throw UserError for what is none.
[[nodiscard]] zrannotations::BalloonShape ParseShape(std::string_view word);
[[nodiscard]] zrannotations::Terminator ParseTerminator(std::string_view word);
/// "on" or "off".
[[nodiscard]] bool ParseStack(std::string_view word);
[[nodiscard]] double CheckedFontSize(double size);
[[nodiscard]] double CheckedLineWidth(double width);
[[nodiscard]] PictureMode ParsePictureMode(std::string_view word);
[[nodiscard]] double CheckedOutline(double width);

[[nodiscard]] std::string_view WordOf(zrannotations::BalloonShape shape);
[[nodiscard]] std::string_view WordOf(zrannotations::Terminator terminator);
[[nodiscard]] std::string_view WordOf(PictureMode mode);

}  // namespace zrsheet
