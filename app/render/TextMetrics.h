// How much room text takes, from the font itself. Any thread.

#pragma once

#include <string>
#include <string_view>

namespace zrsheet {

/// The family of every text on the sheet; the system's others stand in for characters that it lacks.
inline constexpr const char* kFontFamily = "DejaVu Sans";

/// Sizes and results are page pixels. Text is UTF-8; what CleanText drops takes no room.
[[nodiscard]] double TextWidth(std::string_view text, double size, bool bold = false);

/// From the baseline to the top of a line, accents included.
[[nodiscard]] double TextAscent(double size, bool bold = false);

/// The height of capital letters and digits: what centres a label to the eye.
[[nodiscard]] double CapHeight(double size, bool bold = false);

/// The text, cleaned, or as much of its beginning as fits into `maxWidth` with an ellipsis behind; nothing
/// when not even the ellipsis fits.
[[nodiscard]] std::string Ellipsize(std::string_view text, double size, double maxWidth, bool bold = false);

}  // namespace zrsheet
