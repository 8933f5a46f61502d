#include "app/command/LabelPlace.h"

#include "app/document/UserError.h"

namespace zrsheet {

PagePoint LabelPlace(const Document& document, const Document::CalloutPtr& callout) {
    du::SmartPtr<zrk::ShapeView> view = document.View();
    const dg::DPoint3D pixel = callout->GetLabelRelativeScreenPosition(view);
    return {pixel.x, pixel.y};
}

void PlaceLabel(const Document& document, const Document::CalloutPtr& callout, const PagePoint& place) {
    du::SmartPtr<zrk::ShapeView> view = document.View();
    dg::DPoint3D pixel = callout->GetLabelRelativeScreenPosition(view);
    pixel.x = place.x;
    pixel.y = place.y;
    dg::Camera3D camera;
    view->GetCamera(camera);
    if (!callout->SetMarkupLabelPosition(pixel * camera.GetPixelToWorld())) {
        throw UserError("the part of the callout '" + callout->GetMarkupText().Text() +
                        "' is gone; its label cannot be moved");
    }
}

}  // namespace zrsheet
