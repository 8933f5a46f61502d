#include "app/sheet/Figure.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "app/sheet/CalloutLabel.h"
#include "app/sheet/CalloutPlates.h"
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

// How much the page grows on each side for labels that find no room: so much, then twice, three times as
// much, and so on, and how often at the most. On paper more would leave nothing to read.
constexpr double kGrowth = 0.06;
constexpr int kMostGrowths = 8;
constexpr int kMostGrowthsOnPaper = 4;
constexpr double kGrowthCost = 0.025;  // in faults, times the square: a small model is worse than a fault
constexpr std::size_t kManyLabels = 600;

// Labels that cannot be read are so much worse than leaders that cross or run into them.
constexpr std::size_t kWorstFault = 10;

// What is gained by enlarging the model less than that is not worth arranging all labels anew.
constexpr double kLeastEnlargement = 1.03;

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

/// How far the largest label reaches out of the model along an axis.
double Reach(const zrcallouts::LayoutProblem& problem, int axis) {
    return problem.rules.distance + zrcallouts::GreatestLength(problem.labels, axis);
}

/// Whether no side of the model has room for the largest label.
bool IsTight(const zrcallouts::LayoutProblem& problem) {
    return !problem.page.Holds(Grown(problem.model, Reach(problem, 0), Reach(problem, 1)));
}

std::size_t BadnessOf(const zrcallouts::LayoutQuality& quality) {
    using enum zrcallouts::LayoutFaultKind;
    const std::size_t light = quality.Count(LeadersCross) + quality.Count(LeaderMeetsLabel);
    return light + kWorstFault * (quality.faults.size() - light);
}

/// The best layout so far: with the fewest faults, unless the page grows too much for too few of them.
struct BestLayout {
    std::vector<zrcallouts::ScreenPoint> centres;
    double cost = std::numeric_limits<double>::infinity();

    void Try(const zrcallouts::LayoutProblem& problem, int growth) {
        const double costOfGrowth = growth * growth * kGrowthCost;
        if (costOfGrowth >= cost) return;  // not even without faults
        auto next = zrcallouts::SolveLayout(problem);
        const std::size_t badness = BadnessOf(zrcallouts::MeasureLayout(problem, next));
        // Where faults remain all the same, room is worth the less.
        const double faults = static_cast<double>(badness);
        const double costs = faults + costOfGrowth * (1.0 + faults);
        if (costs >= cost) return;
        cost = costs;
        centres = std::move(next);
    }
};

/// Pages of pixels grow when labels need it, and on paper everything becomes smaller. So much as takes the
/// layout's faults away, unless few faults would take much. Labels farther from the model stand in longer
/// rows, and leaders come to them at better angles. With very many labels only one larger page is tried.
std::vector<zrcallouts::ScreenPoint> SolveWithRoom(zrcallouts::LayoutProblem problem, int mostGrowths) {
    const double wide = kGrowth * problem.page.Length(0);
    const double high = kGrowth * problem.page.Length(1);
    for (int i = 0; i < kMostGrowths && IsTight(problem); ++i) problem.page = Grown(problem.page, wide, high);
    BestLayout best;
    best.Try(problem, 0);
    zrcallouts::LayoutProblem farther = problem;
    const int first = problem.labels.size() > kManyLabels ? mostGrowths : 1;
    for (int steps = first, growth = first; steps <= mostGrowths; growth += ++steps) {
        problem.page = farther.page = Grown(problem.page, steps * wide, steps * high);
        farther.rules.distance += steps * std::min(wide, high);
        best.Try(problem, growth);
        best.Try(farther, growth);
    }
    return best.centres;
}

du::SmartPtr<zrcallouts::OptimalLayout> OptimalLayoutOf(const Document& document) {
    return du::SmartPtr<zrcallouts::OptimalLayout>(new zrcallouts::OptimalLayout(
        document.Engine(), document.View(), document.Layout().rules,
        [&document](const auto& callout) { return LabelOf(callout, document.Style(), SheetStyle()).form; }));
}

/// The model in its view and all labels, those that lead nowhere excepted.
PageBox DrawnBox(const Document& document) {
    PageBox drawn = document.Model().ScreenBox();
    const CalloutPlates plates(document.Callouts(), document.Style(), {}, SheetStyle());
    for (const PageBox& box : plates.Boxes()) {
        drawn = {std::min(drawn.x0, box.x0), std::min(drawn.y0, box.y0), std::max(drawn.x1, box.x1),
                 std::max(drawn.y1, box.y1)};
    }
    return drawn;
}

/// How far what is drawn stands out of the model on each side, or would if the first label came there.
PageBox RoomForLabels(const Document& document, const PageBox& model, const PageBox& drawn) {
    const zrcallouts::LayoutProblem problem = OptimalLayoutOf(document)->Describe(document.Callouts());
    const double wide = std::ceil(Reach(problem, 0)) + 1.0;
    const double high = std::ceil(Reach(problem, 1)) + 1.0;
    return {std::max(model.x0 - drawn.x0, wide), std::max(model.y0 - drawn.y0, high),
            std::max(drawn.x1 - model.x1, wide), std::max(drawn.y1 - model.y1, high)};
}

/// The camera that shows the model as large as such room on each side allows, in the middle of the rest.
/// None if that is hardly larger.
std::optional<dg::Camera3D> Enlarged(const dg::Camera3D& camera, const PageBox& model, const PageBox& room) {
    const double width = camera.GetViewportWidth() - room.x0 - room.x1;
    const double height = camera.GetViewportHeight() - room.y0 - room.y1;
    const double factor =
        std::min(width / std::max(model.x1 - model.x0, 1.0), height / std::max(model.y1 - model.y0, 1.0));
    if (factor < kLeastEnlargement) return std::nullopt;
    return camera.Magnified({0.5 * (model.x0 + model.x1), 0.5 * (model.y0 + model.y1), 0.0},
                            {room.x0 + 0.5 * width, room.y0 + 0.5 * height, 0.0}, factor);
}

void LookThrough(Document& document, const dg::Camera3D& camera) {
    document.View()->SetCamera(camera);
    document.Settle();
    LayOutLabels(document, document.Callouts());
    document.Settle();
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
    const auto layout = OptimalLayoutOf(document);
    const zrcallouts::LayoutProblem problem = layout->Describe(callouts);
    const int mostGrowths = document.Paper().size == PaperSize::None ? kMostGrowths : kMostGrowthsOnPaper;
    layout->Place(callouts, problem, SolveWithRoom(problem, mostGrowths), nullptr);
}

void FillFigure(Document& document) {
    if (document.Layout().mode == LayoutMode::Simple || document.Callouts().empty()) return;
    dg::Camera3D before;
    document.View()->GetCamera(before);
    const PageBox drawn = DrawnBox(document);
    const double width = before.GetViewportWidth();
    const double height = before.GetViewportHeight();
    const auto isInFigure = [&](const PageBox& box) {
        return box.x0 >= 0.0 && box.y0 >= 0.0 && box.x1 <= width && box.y1 <= height;
    };
    if (!isInFigure(drawn)) return;
    const PageBox model = document.Model().ScreenBox();
    const auto larger = Enlarged(before, model, RoomForLabels(document, model, drawn));
    if (!larger) return;
    LookThrough(document, *larger);
    if (!isInFigure(DrawnBox(document))) LookThrough(document, before);
}

}  // namespace zrsheet
