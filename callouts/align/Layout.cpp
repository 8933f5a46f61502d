#include "callouts/align/Layout.h"

#include <algorithm>
#include <utility>

#include "callouts/align/Align.h"
#include "callouts/align/CalloutLayoutVisitor.h"
#include "callouts/align/LabelSpace.h"
#include "zrk/tree/Tree.h"
#include "zrk/world/World.h"

namespace zrcallouts {
namespace {

constexpr float kMargin = 30.0F;  // pixels around the model, and to the window's border

/// How far along the side a coordinate lies, 0 to 1; -1 for a side without length.
double Fraction(double coordinate, float least, float greatest) {
    const double length = static_cast<double>(greatest - least);
    return length == 0.0 ? -1.0 : (coordinate - static_cast<double>(least)) / length;
}

}  // namespace

Layout::Layout(du::SmartPtr<Callouts> engine, du::SmartPtr<zrk::ShapeView> view)
    : m_engine(std::move(engine)), m_view(std::move(view)) {}

Layout::~Layout() = default;

bool Layout::Execute(const std::set<du::SmartPtr<zrannotations::Callout>>& callouts) {
    if (!m_engine || !m_view) return false;
    if (callouts.empty()) return true;
    dg::Camera3D camera;
    m_view->GetCamera(camera);
    const dg::DMat44 pixelToWorld = camera.GetWorldToPixel().Invert();
    const dg::FBox frame = FrameAround(MeasureModel(camera), camera);
    std::array<SideList, kSideCount> sides;
    for (const auto& callout : callouts) {
        if (!callout) continue;
        dg::DPoint3D point;
        callout->GetMarkupLabelPosition(point);
        point *= camera.GetWorldToPixel();
        const Side side = MoveToSide(frame, point);
        PlaceLabel(*callout, point * pixelToWorld);
        sides[side].push_back(callout);
    }
    for (const Side side : {kLeft, kRight, kTop, kBottom}) {
        if (sides[side].size() < 2) continue;
        Align(sides[side], side == kLeft || side == kRight ? SpaceY : SpaceX, m_view).Execute();
    }
    return true;
}

dg::FBox Layout::MeasureModel(const dg::Camera3D& camera) const {
    CalloutLayoutVisitor visitor(m_engine->GetScene(), camera.GetWorldToPixel());
    const auto world = zrk::World::GetWorld();
    const auto tree = world ? world->GetTree() : du::SmartPtr<zrk::Tree>();
    if (tree) tree->Visit(visitor, 0);
    return visitor.GetBox();
}

/// The model's rectangle with a margin, as far as it lies inside the window; without a model all of the
/// window.
dg::FBox Layout::FrameAround(dg::FBox model, const dg::Camera3D& camera) {
    const dg::FBox window{{kMargin, kMargin, -0.5F},
                          {static_cast<float>(camera.GetViewportWidth()) - kMargin,
                           static_cast<float>(camera.GetViewportHeight()) - kMargin, 0.5F}};
    if (model.IsEmpty()) return window;
    model.min.x = std::max(model.min.x - kMargin, window.min.x);
    model.min.y = std::max(model.min.y - kMargin, window.min.y);
    model.max.x = std::min(model.max.x + kMargin, window.max.x);
    model.max.y = std::min(model.max.y + kMargin, window.max.y);
    return model;
}

/// Puts the pixel on the nearest side; upright sides win ties, and so do the sides at the least coordinates.
Layout::Side Layout::MoveToSide(const dg::FBox& frame, dg::DPoint3D& pixel) {
    const bool isLeft = Fraction(pixel.x, frame.min.x, frame.max.x) <= 0.5;
    const bool isTop = Fraction(pixel.y, frame.min.y, frame.max.y) <= 0.5;
    const double sideX = static_cast<double>(isLeft ? frame.min.x : frame.max.x);
    const double sideY = static_cast<double>(isTop ? frame.min.y : frame.max.y);
    const double dx = pixel.x - sideX;
    const double dy = pixel.y - sideY;
    if (dy * dy >= dx * dx) {
        pixel.x = sideX;
        return isLeft ? kLeft : kRight;
    }
    pixel.y = sideY;
    return isTop ? kTop : kBottom;
}

void Layout::PlaceLabel(zrannotations::Callout& callout, const dg::DPoint3D& world) {
    dg::DMat44 toLocal;
    if (IsWorldPlaced(callout)) {
        callout.SetLabelPosition(world);
    } else if (WorldToLabel(callout, toLocal)) {
        callout.SetLabelPosition(world * toLocal);
    }
}

}  // namespace zrcallouts
