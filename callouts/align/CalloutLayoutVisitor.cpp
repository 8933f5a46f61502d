#include "callouts/align/CalloutLayoutVisitor.h"

#include <utility>

namespace zrcallouts {
namespace {

dg::FBox BoxOf(const zrk::Instance& instance, const zrk::ShapeInstance& part) {
    dg::FBox box = instance.GetShapeSourceBBox();
    if (!(box == dg::FBox::EMPTY)) return box;
    const auto shape = part.GetShape();
    zrg::Shape* data = shape ? shape->GetShapeData() : nullptr;
    if (data != nullptr) data->ComputeDefaultBBox(box);
    return box;
}

}  // namespace

CalloutLayoutVisitor::CalloutLayoutVisitor(du::SmartPtr<zrk::ShapeScene> scene,
                                           const dg::DMat44& worldToPixel)
    : m_scene(std::move(scene)), m_worldToPixel(worldToPixel) {}

CalloutLayoutVisitor::~CalloutLayoutVisitor() = default;

bool CalloutLayoutVisitor::VisitInstance(const du::SmartPtr<zrk::Instance>& instance) {
    if (!m_scene) return false;
    du::SmartPtr<zrk::ShapeInstance> part;
    m_scene->GetShapeInstance(instance, part);
    if (!part) return true;
    dg::Location location;
    part->GetLocation(location);
    m_box.Enclose(BoxOf(*instance, *part) * location * m_worldToPixel);
    return true;
}

}  // namespace zrcallouts
