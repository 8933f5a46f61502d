#include "app/sheet/Figure.h"

#include <algorithm>

#include "app/sheet/CalloutLabel.h"
#include "app/sheet/PageLayout.h"
#include "app/sheet/PaperLayout.h"
#include "app/sheet/PartsTable.h"
#include "app/sheet/SheetItems.h"
#include "callouts/align/Layout.h"
#include "callouts/align/OptimalLayout.h"
#include "callouts/align/optimal/LayoutSolver.h"

namespace zrsheet {
namespace {

// Room for two rows of balloons with a number each.
constexpr double kModelMargin = 80.0;

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

/// A page of pixels grows when labels need it: so much that each side has room for a row of them.
void MakeRoom(zrcallouts::LayoutProblem& problem) {
    const double wide = problem.rules.distance + zrcallouts::GreatestLength(problem.labels, 0);
    const double high = problem.rules.distance + zrcallouts::GreatestLength(problem.labels, 1);
    zrcallouts::ScreenBox& page = problem.page;
    const zrcallouts::ScreenBox& model = problem.model;
    page = {std::min(page.x0, model.x0 - wide), std::min(page.y0, model.y0 - high),
            std::max(page.x1, model.x1 + wide), std::max(page.y1, model.y1 + high)};
}

}  // namespace

void FrameModel(Document& document, const ViewDirection& direction) {
    const PageBox figure = FigureOf(document, direction);
    document.Model().LookAt(direction, static_cast<int>(figure.x1 - figure.x0),
                            static_cast<int>(figure.y1 - figure.y0), kModelMargin);
}

void LayOutLabels(const Document& document, const std::vector<Document::CalloutPtr>& callouts) {
    if (document.Layout().mode == LayoutMode::Simple) {
        const du::SmartPtr<zrcallouts::Layout> simple(
            new zrcallouts::Layout(document.Engine(), document.View()));
        simple->Execute({callouts.begin(), callouts.end()});
        return;
    }
    const zrannotations::CalloutStyle& ofDocument = document.Style();
    const du::SmartPtr<zrcallouts::OptimalLayout> layout(new zrcallouts::OptimalLayout(
        document.Engine(), document.View(), document.Layout().rules, [&](const auto& callout) {
            return LabelOf(callout, ofDocument, SheetStyle()).form;
        }));
    zrcallouts::LayoutProblem problem = layout->Describe(callouts);
    if (document.Paper().size == PaperSize::None) MakeRoom(problem);
    layout->Place(callouts, problem, zrcallouts::SolveLayout(problem), nullptr);
}

}  // namespace zrsheet
