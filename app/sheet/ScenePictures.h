// The pictures of the scene: as the view sees it, and through the glasses over it.

#pragma once

#include <vector>

#include "app/document/ProductModel.h"
#include "app/render/PictureStyle.h"
#include "app/sheet/Sheet.h"
#include "dg/Camera3D.h"
#include "zrk/annotation/AnnoSet.h"
#include "zrk/scene/PickScene.h"

namespace zrsheet {

/// Of each part of the scene; empty if the model gives none a colour.
[[nodiscard]] std::vector<dg::Color> ColorsOf(const zrk::PickScene& scene, const ProductModel& model);

/// What `camera` sees of the parts that are visible, as large as its viewport.
[[nodiscard]] Raster PictureOf(const zrk::PickScene& scene, const dg::Camera3D& camera,
                               const PictureStyle& style, unsigned threads);

/// The glasses among the annotations that are visible. `figure` is where the view's picture lies on the page.
/// An inset's id counts all insets of the scene, so that it stays when others are hidden.
[[nodiscard]] std::vector<SheetInset> InsetsOf(const zrk::AnnoSet& annotations, const zrk::PickScene& scene,
                                               const PictureStyle& style, const PageBox& figure,
                                               unsigned threads);

}  // namespace zrsheet
