// Between the world and the coordinates in which a callout keeps its label.

#pragma once

#include "dg/DMat44.h"
#include "zrannotations/Callout.h"

namespace zrcallouts {

/// Whether the label is kept in world coordinates, not relative to a part.
bool IsWorldPlaced(const zrannotations::Callout& callout);
/// From the world to the frame of the first leader's part: its place and scale, without its rotation. False,
/// and `toLocal` untouched, when the part is gone.
bool WorldToLabel(const zrannotations::Callout& callout, dg::DMat44& toLocal);

}  // namespace zrcallouts
