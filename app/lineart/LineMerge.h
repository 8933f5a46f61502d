// From pieces of curves to the lines of the picture: none drawn twice, joined, without needless points.

#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "app/lineart/CurveSight.h"
#include "app/lineart/LineArt.h"

namespace zrsheet {

/// Takes away what falls on a line further up (see LineKind), or on an earlier one of its kind.
[[nodiscard]] std::vector<SeenPiece> WithoutDuplicates(std::vector<SeenPiece> pieces);

/// The lines in drawing order, outlines last. `areas` is how many square pixels of each placement are seen:
/// parts with many lines on little surface get finer ones.
[[nodiscard]] std::vector<ArtLine> JoinedLines(std::span<const SeenPiece> pieces,
                                               std::span<const double> areas);

}  // namespace zrsheet
