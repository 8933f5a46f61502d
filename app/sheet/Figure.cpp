#include "app/sheet/Figure.h"

#include <algorithm>

#include "app/sheet/CalloutPlates.h"
#include "app/sheet/PageLayout.h"
#include "app/sheet/PaperLayout.h"
#include "app/sheet/PartsTable.h"
#include "app/sheet/SheetItems.h"

namespace zrsheet {
namespace {

// The engine frames the model 30 pixels off and keeps as much free at the window's border; a balloon's half
// comes on top.
constexpr double kModelMargin = 76.0;

/// What the labels stand around, in pixels of the view: the model and the glasses over it.
PageBox Crowd(const Document& document) {
    PageBox crowd = document.Model().ScreenBox();
    for (const auto& inset : document.Insets()) {
        if (!inset->IsVisible()) continue;
        const auto glass = inset->GetGlass();
        crowd = {std::min(crowd.x0, glass.centre.x - glass.radius),
                 std::min(crowd.y0, glass.centre.y - glass.radius),
                 std::max(crowd.x1, glass.centre.x + glass.radius),
                 std::max(crowd.y1, glass.centre.y + glass.radius)};
    }
    return crowd;
}

PageBox FigureOf(const Document& document, const ViewDirection& direction) {
    const SheetStyle style;
    const std::vector<SheetItem> items = ListedItems(*document.Items());
    if (document.Paper().size != PaperSize::None) {
        const PagePoint extent = document.Model().ExtentFrom(direction);
        return LayOutPaper(document, items, style, {extent.x, extent.y}).figure;
    }
    const PartsTable table(items, style, document.Paper().listColumns);
    return LayOutPage(document.PageWidth(), document.PageHeight(), table, style).figure;
}

}  // namespace

void FrameModel(Document& document, const ViewDirection& direction) {
    const PageBox figure = FigureOf(document, direction);
    document.Model().LookAt(direction, static_cast<int>(figure.x1 - figure.x0),
                            static_cast<int>(figure.y1 - figure.y0), kModelMargin);
}

void LayOutLabels(const Document& document, const std::vector<Document::CalloutPtr>& callouts) {
    dg::Camera3D camera;
    document.View()->GetCamera(camera);
    const PageBox figure{0.0, 0.0, static_cast<double>(camera.GetViewportWidth()),
                         static_cast<double>(camera.GetViewportHeight())};
    CalloutPlates plates(callouts, document.Style(), figure, SheetStyle());
    plates.Tidy(Crowd(document));
    plates.StoreLabels();
}

}  // namespace zrsheet
