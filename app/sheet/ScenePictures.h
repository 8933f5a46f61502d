// The pictures of the scene: as the view sees it, and through the glasses over it.

#pragma once

#include <functional>
#include <string>
#include <vector>

#include "app/document/PictureChoice.h"
#include "app/document/ProductModel.h"
#include "app/lineart/LineArtist.h"
#include "app/render/PictureStyle.h"
#include "app/sheet/Sheet.h"
#include "dg/Camera3D.h"
#include "zrk/annotation/AnnoSet.h"
#include "zrk/scene/PickScene.h"

namespace zrsheet {

/// Of each part of the scene; empty if the model gives none a colour.
[[nodiscard]] std::vector<dg::Color> ColorsOf(const zrk::PickScene& scene, const ProductModel& model);

/// "#rrggbb".
[[nodiscard]] std::string CssColor(const dg::Color& color);

/// Takes pictures of the parts that are visible, as the author wants them drawn.
class ScenePainter {
public:
    /// The scene must outlive it. Requires: at least one thread.
    ScenePainter(const zrk::PickScene& scene, const PictureChoice& choice, const PictureStyle& style,
                 unsigned threads);

    /// The viewport's picture with as many pixels to one of its own as the style says; empty where the author
    /// wants lines only.
    [[nodiscard]] Raster Shade(const dg::Camera3D& camera) const;
    /// As large as the viewport; without lines where the author wants none.
    [[nodiscard]] LineArt Draw(const dg::Camera3D& camera) const;

private:
    const zrk::PickScene& m_scene;
    PictureMode m_mode;
    PictureStyle m_style;
    unsigned m_threads;
    LineArtist m_artist;
};

/// Tells which parts areas belong to.
using HotspotSource = std::function<std::vector<SheetHotspot>(std::vector<VisibleArea>)>;

/// The glasses among the annotations that are visible. `figure` is where the view's picture lies on the page.
/// An inset's id counts all insets of the scene, so that it stays when others are hidden.
[[nodiscard]] std::vector<SheetInset> InsetsOf(const zrk::AnnoSet& annotations, const ScenePainter& painter,
                                               const PageBox& figure, const HotspotSource& hotspotsOf);

}  // namespace zrsheet
