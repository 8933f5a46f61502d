#include "callouts/align/OptimalLayout.h"

#include <set>
#include <utility>

#include "callouts/align/PartOutlines.h"
#include "callouts/align/optimal/LayoutSolver.h"
#include "zrannotations/Inset.h"
#include "zrannotations/MoveOperationStep.h"
#include "zrk/annotation/AnnoSet.h"

namespace zrcallouts {
namespace {

using zrannotations::Callout;
using zrannotations::Inset;

dg::Location PlaceAt(const dg::DPoint3D& position) { return {dg::FMat33::IDENTITY, position}; }

ScreenBox BoxAround(const Inset::Glass& glass) {
    return {glass.centre.x - glass.radius, glass.centre.y - glass.radius, glass.centre.x + glass.radius,
            glass.centre.y + glass.radius};
}

/// Where the leaders that are drawn end; those that an inset cuts off end nowhere.
std::vector<ScreenPoint> AnchorsOf(const Callout& callout, const dg::Camera3D& camera) {
    std::vector<ScreenPoint> anchors;
    dg::DPoint3D world;
    dg::DPoint3D pixel;
    for (const unsigned position : callout.GetDrawnLeaders()) {
        if (callout.GetLeaderEndOnScreen(position, camera, world, pixel))
            anchors.push_back({pixel.x, pixel.y});
    }
    return anchors;
}

}  // namespace

OptimalLayout::OptimalLayout(du::SmartPtr<Callouts> engine, du::SmartPtr<zrk::ShapeView> view,
                             const LayoutRules& rules, FormSource forms)
    : m_engine(std::move(engine)), m_view(std::move(view)), m_rules(rules), m_forms(std::move(forms)) {}

OptimalLayout::~OptimalLayout() = default;

LayoutProblem OptimalLayout::Describe(const std::vector<CalloutPtr>& callouts) const {
    dg::Camera3D camera;
    m_view->GetCamera(camera);
    const du::SmartPtr<zrk::ShapeScene> scene = m_view->GetShapeScene();
    LayoutProblem problem;
    problem.rules = m_rules;
    problem.page = {0.0, 0.0, static_cast<double>(camera.GetViewportWidth()),
                    static_cast<double>(camera.GetViewportHeight())};
    const ScreenBox middle{problem.page.Middle(0), problem.page.Middle(1), problem.page.Middle(0),
                           problem.page.Middle(1)};
    problem.model = scene ? BoxOfParts(*scene, camera.GetWorldToPixel(), middle) : middle;
    const bool followsOutline =
        m_rules.pattern == LayoutPattern::Circle || m_rules.pattern == LayoutPattern::Silhouette;
    if (scene && followsOutline) problem.areas = OutlinesOfParts(*scene, camera.GetWorldToPixel());
    for (const CalloutPtr& callout : callouts) AddLabel(problem, callout, camera, false);
    AddSurroundings(problem, callouts, camera);
    return problem;
}

void OptimalLayout::AddLabel(LayoutProblem& problem, const CalloutPtr& callout, const dg::Camera3D& camera,
                             bool isPinned) const {
    du::SmartPtr<zrk::ShapeView> view = m_view;
    const dg::DPoint3D centre = callout->GetLabelRelativeScreenPosition(view);
    problem.labels.push_back(
        {m_forms(*callout), AnchorsOf(*callout, camera), {centre.x, centre.y}, isPinned});
}

/// What labels keep off: insets, and callouts that are not arranged.
void OptimalLayout::AddSurroundings(LayoutProblem& problem, const std::vector<CalloutPtr>& arranged,
                                    const dg::Camera3D& camera) const {
    const std::set<CalloutPtr> known(arranged.begin(), arranged.end());
    du::SmartPtr<zrk::AnnoSet> annotations;
    m_engine->GetScene()->GetAnnoSet(annotations);
    if (!annotations) return;
    for (const auto& annotation : annotations->GetAnnotations()) {
        const auto inset = du::DynamicCast<Inset>(annotation);
        if (inset && inset->IsVisible()) problem.obstacles.push_back(BoxAround(inset->GetGlass()));
        const auto callout = du::DynamicCast<Callout>(annotation);
        if (callout && !known.contains(callout) && !callout->LeadsNowhere())
            AddLabel(problem, callout, camera, true);
    }
}

bool OptimalLayout::Execute(const std::vector<CalloutPtr>& callouts,
                            const du::SmartPtr<zrk::Operation>& operation) {
    if (!m_engine || !m_view) return false;
    const LayoutProblem problem = Describe(callouts);
    Place(callouts, problem, SolveLayout(problem), operation);
    return true;
}

void OptimalLayout::Place(const std::vector<CalloutPtr>& callouts, const LayoutProblem& problem,
                          const std::vector<ScreenPoint>& centres,
                          const du::SmartPtr<zrk::Operation>& operation) const {
    dg::Camera3D camera;
    m_view->GetCamera(camera);
    for (std::size_t i = 0; i < callouts.size(); ++i) {
        if (!(centres[i] == problem.labels[i].centre)) Move(callouts[i], centres[i], camera, operation);
    }
    if (operation) zrk::RecordOperation(operation);
}

/// Keeps the label's depth.
void OptimalLayout::Move(const CalloutPtr& callout, const ScreenPoint& centre, const dg::Camera3D& camera,
                         const du::SmartPtr<zrk::Operation>& operation) const {
    const bool isInScreenSpace = callout->IsLabelInScreenSpace();
    du::SmartPtr<zrk::ShapeView> view = m_view;
    dg::DPoint3D pixel = callout->GetLabelRelativeScreenPosition(view);
    pixel.x = centre.x;
    pixel.y = centre.y;
    const dg::DPoint3D before = callout->GetPosition();
    if (!callout->SetMarkupLabelPosition(pixel * camera.GetPixelToWorld())) return;
    if (isInScreenSpace) callout->SetLabelScreenSpaceMode(m_view);
    if (operation) {
        operation->AddStep(new zrannotations::MoveOperationStep(callout, 0, PlaceAt(before),
                                                                PlaceAt(callout->GetPosition()), true));
    }
}

}  // namespace zrcallouts
