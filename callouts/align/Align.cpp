#include "callouts/align/Align.h"

#include <algorithm>
#include <utility>

#include "callouts/align/LabelSpace.h"
#include "dg/Camera3D.h"
#include "dg/Location.h"
#include "zrannotations/MoveOperationStep.h"
#include "zrk/object/Checked.h"

namespace zrcallouts {
namespace {

using zrannotations::Callout;

bool IsSpacing(Align_Mode mode) { return mode == SpaceX || mode == SpaceY; }

bool IsDistributing(Align_Mode mode) { return mode == DistributeX || mode == DistributeY; }

int AxisOf(Align_Mode mode) {
    const bool isVertical = mode == AlignMinY || mode == AlignMaxY || mode == AlignCenterY ||
                            mode == DistributeY || mode == SpaceY;
    return isVertical ? 1 : 0;
}

dg::Location PlaceAt(const dg::DPoint3D& position) { return {dg::FMat33::IDENTITY, position}; }

}  // namespace

thread_local dg::DMat44 Align::m_ObjToPx;
thread_local int Align::m_idx = 0;

Align::Align(std::vector<AnnotationPtr>& annotations, Align_Mode mode, du::SmartPtr<zrk::ShapeView> view)
    : Align(annotations, mode, std::move(view), nullptr) {}

Align::Align(std::vector<AnnotationPtr>& annotations, Align_Mode mode, du::SmartPtr<zrk::ShapeView> view,
             du::SmartPtr<zrk::Operation> operation)
    : m_annotations(annotations), m_mode(mode), m_view(std::move(view)), m_operation(std::move(operation)) {}

Align::~Align() = default;

dg::DPoint3D Align::PixelOf(const Callout& callout) const {
    if (callout.IsLabelInScreenSpace()) {
        du::SmartPtr<zrk::ShapeView> view = m_view;
        return callout.GetLabelRelativeScreenPosition(view);
    }
    dg::DPoint3D world;
    callout.GetMarkupLabelPosition(world);
    return world * m_ObjToPx;
}

bool Align::HasEnough() const {
    if (IsSpacing(m_mode)) return true;
    return m_annotations.size() >= (IsDistributing(m_mode) ? 3U : 2U);
}

bool Align::CollectData() {
    if (!m_view) return false;
    dg::Camera3D camera;
    m_view->GetCamera(camera);
    m_ObjToPx = camera.GetWorldToPixel();
    m_idx = AxisOf(m_mode);
    if (!HasEnough()) return false;
    if (IsSpacing(m_mode) || IsDistributing(m_mode)) SortByPixel();
    Measure();
    return true;
}

// Each label is measured once, not once a comparison.
void Align::SortByPixel() {
    std::vector<std::pair<double, AnnotationPtr>> keyed;
    keyed.reserve(m_annotations.size());
    for (const auto& annotation : m_annotations) {
        const auto callout = du::DynamicCast<Callout>(annotation);
        const dg::DPoint3D pixel = callout ? PixelOf(*callout) : dg::DPoint3D();
        keyed.emplace_back(pixel[m_idx], annotation);
    }
    std::stable_sort(keyed.begin(), keyed.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::transform(keyed.begin(), keyed.end(), m_annotations.begin(),
                   [](const auto& entry) { return entry.second; });
}

// When the list begins with something else than a callout, the measures start from their initial zero.
void Align::Measure() {
    const bool needsMinimum = m_mode != AlignMaxX && m_mode != AlignMaxY;
    const bool needsMaximum = m_mode != AlignMinX && m_mode != AlignMinY;
    for (std::size_t i = 0; i < m_annotations.size(); ++i) {
        const auto callout = du::DynamicCast<Callout>(m_annotations[i]);
        if (!callout) continue;
        const double value = PixelOf(*callout)[m_idx];
        if (i == 0) m_minimum = m_maximum = value;
        if (needsMinimum) m_minimum = std::min(m_minimum, value);
        if (needsMaximum) m_maximum = std::max(m_maximum, value);
    }
}

bool Align::Execute() {
    if (!CollectData()) return false;
    const dg::DMat44 pixelToWorld = m_ObjToPx.Invert();
    dg::DPoint3D previous;
    for (std::size_t i = 0; i < m_annotations.size(); ++i) {
        if (const auto callout = du::DynamicCast<Callout>(m_annotations[i]))
            Move(callout, i, previous, pixelToWorld);
    }
    if (m_operation) zrk::RecordOperation(m_operation);
    return true;
}

void Align::Move(const CalloutPtr& callout, std::size_t index, dg::DPoint3D& previous,
                 const dg::DMat44& pixelToWorld) {
    dg::DPoint3D pixel = PixelOf(*callout);
    dg::DPoint3D world;
    if (callout->IsLabelInScreenSpace()) {
        world = pixel * pixelToWorld;
    } else {
        callout->GetMarkupLabelPosition(world);
    }
    if (!Target(index, previous, pixel)) return;
    dg::DMat44 toLocal;
    if (!IsWorldPlaced(*callout)) WorldToLabel(*callout, toLocal);
    dg::DPoint3D target = pixel * pixelToWorld;
    SetPosition(callout, world, target, toLocal);
}

/// Moves `pixel` to where the mode wants the label; false to leave the label alone.
bool Align::Target(std::size_t index, dg::DPoint3D& previous, dg::DPoint3D& pixel) const {
    double& coordinate = pixel[m_idx];
    switch (m_mode) {
        case AlignMinX:
        case AlignMinY:
            coordinate = m_minimum;
            return true;
        case AlignMaxX:
        case AlignMaxY:
            coordinate = m_maximum;
            return true;
        case AlignCenterX:
        case AlignCenterY:
            coordinate = (m_maximum + m_minimum) * 0.5;
            return true;
        case DistributeX:
        case DistributeY:
            coordinate = m_minimum + (m_maximum - m_minimum) * static_cast<double>(index) /
                                         static_cast<double>(m_annotations.size() - 1);
            return true;
        case SpaceX:
        case SpaceY:
            break;
        default:
            return false;
    }
    if (index > 0) {
        const double distance = coordinate - previous[m_idx];
        if (distance < m_gap) coordinate += m_gap - distance;
    }
    previous = pixel;
    return index > 0;
}

void Align::SetPosition(CalloutPtr callout, dg::DPoint3D& from, dg::DPoint3D& to, dg::DMat44& toLocal) {
    if (!callout) return;
    const bool isWorldPlaced = IsWorldPlaced(*callout);
    const bool isInScreenSpace = !isWorldPlaced && callout->IsLabelInScreenSpace();
    const dg::DPoint3D target = isWorldPlaced ? to : to * toLocal;
    if (m_operation && !isInScreenSpace) {
        const dg::DPoint3D source = isWorldPlaced ? from : from * toLocal;
        m_operation->AddStep(zrk::Checked(
            new zrannotations::MoveOperationStep(callout, 0, PlaceAt(source), PlaceAt(target), true)));
    }
    callout->SetLabelPosition(target);
    if (isInScreenSpace) callout->SetLabelScreenSpaceMode(m_view);
}

}  // namespace zrcallouts
