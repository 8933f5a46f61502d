// Draws the technical illustration of a model: softly shaded parts on white ground with clear black edges.

#pragma once

#include <cstdint>
#include <span>

#include "app/render/PictureStyle.h"
#include "app/render/Raster.h"
#include "dg/Camera3D.h"
#include "zrg/RayScene.h"

namespace zrsheet {

/// The picture that `camera` takes of `scene`, as large as its viewport. `partOfPlacement` names the part of
/// each placement of the scene, in the order they were added: placements with equal numbers are one part and
/// have no boundary between them. Requires: a number and, unless the style has none at all, a colour for
/// every placement, at least one thread, a viewport that is not empty. The picture does not depend on
/// `threads`. Cost: about samplesPerPixel squared + 1 rays a pixel, and the visible shapes' triangles once.
[[nodiscard]] Raster RenderPicture(const zrg::RayScene& scene, const dg::Camera3D& camera,
                                   const PictureStyle& style, std::span<const std::uint32_t> partOfPlacement,
                                   unsigned threads);

}  // namespace zrsheet
