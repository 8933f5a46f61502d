#include "app/sheet/Figure.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

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

// How much the page grows at a time for labels that find no room, on each side, and how often at the most.
constexpr double kGrowth = 0.06;
constexpr int kMostGrowths = 8;

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

/// The page with so much more room on each side.
zrcallouts::ScreenBox Grown(const zrcallouts::ScreenBox& page, double wide, double high) {
    return {page.x0 - wide, page.y0 - high, page.x1 + wide, page.y1 + high};
}

/// Whether no side of the model has room for the largest label.
bool IsTight(const zrcallouts::LayoutProblem& problem) {
    const double wide = problem.rules.distance + zrcallouts::GreatestLength(problem.labels, 0);
    const double high = problem.rules.distance + zrcallouts::GreatestLength(problem.labels, 1);
    return !problem.page.Holds(Grown(problem.model, wide, high));
}

/// Pages of pixels grow when labels need it, and on paper everything becomes smaller. So much as takes the
/// layout's faults away, if any page does; else the smallest that has the fewest.
std::vector<zrcallouts::ScreenPoint> SolveWithRoom(zrcallouts::LayoutProblem problem) {
    const double wide = kGrowth * problem.page.Length(0);
    const double high = kGrowth * problem.page.Length(1);
    for (int i = 0; i < kMostGrowths && IsTight(problem); ++i) problem.page = Grown(problem.page, wide, high);
    auto best = zrcallouts::SolveLayout(problem);
    std::size_t fewest = zrcallouts::MeasureLayout(problem, best).faults.size();
    for (int i = 0; i < kMostGrowths && fewest > 0; ++i) {
        problem.page = Grown(problem.page, wide, high);
        auto next = zrcallouts::SolveLayout(problem);
        const std::size_t faults = zrcallouts::MeasureLayout(problem, next).faults.size();
        if (faults >= fewest) continue;
        fewest = faults;
        best = std::move(next);
    }
    return best;
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
        document.Engine(), document.View(), document.Layout().rules,
        [&](const auto& callout) { return LabelOf(callout, ofDocument, SheetStyle()).form; }));
    const zrcallouts::LayoutProblem problem = layout->Describe(callouts);
    layout->Place(callouts, problem, SolveWithRoom(problem), nullptr);
}

}  // namespace zrsheet
