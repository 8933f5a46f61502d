#include "zrannotations/AnchorFinder.h"

#include <cmath>

#include "zrk/illustration/SbomInstance.h"
#include "zrk/scene/ShapeView.h"

namespace zrannotations {
namespace {

du::SmartPtr<zrk::ShapeView> MainViewOf(const zrk::ShapeInstance& part) {
    const auto scene = part.GetShapeScene();
    return scene ? du::DynamicCast<zrk::ShapeView>(scene->GetView(0)) : du::SmartPtr<zrk::ShapeView>();
}

dg::DPoint3D Vertex(const zrg::Shape& shape, std::uint32_t index) {
    const auto positions = shape.GetPositions();
    const std::size_t at = static_cast<std::size_t>(index) * 3;
    return {static_cast<double>(positions[at]), static_cast<double>(positions[at + 1]),
            static_cast<double>(positions[at + 2])};
}

/// Twice the area that the triangle takes on the screen; y points down, so a triangle that faces the eye is
/// negative.
double ScreenArea(const dg::DPoint3D& a, const dg::DPoint3D& b, const dg::DPoint3D& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

/// The middle of the triangle that takes the largest area on the screen, those that face the eye before
/// others.
dg::DPoint3D MiddleOfLargestTriangle(const zrg::Shape& shape, const dg::DMat44& localToPixel,
                                     bool isMirrored) {
    const auto indices = shape.GetIndices();
    dg::DPoint3D best = Vertex(shape, indices[0]);
    double bestScore = -1.0;
    for (std::size_t i = 0; i + 2 < indices.size(); i += 3) {
        const dg::DPoint3D a = Vertex(shape, indices[i]);
        const dg::DPoint3D b = Vertex(shape, indices[i + 1]);
        const dg::DPoint3D c = Vertex(shape, indices[i + 2]);
        const double area = ScreenArea(a * localToPixel, b * localToPixel, c * localToPixel);
        const bool facesEye = (area < 0.0) != isMirrored;
        // A triangle seen from behind is kept only while none that faces the eye was met.
        const double score = facesEye ? 1.0 + std::abs(area) : std::abs(area) / (1.0 + std::abs(area));
        if (score <= bestScore) continue;
        bestScore = score;
        best = {(a.x + b.x + c.x) / 3.0, (a.y + b.y + c.y) / 3.0, (a.z + b.z + c.z) / 3.0};
    }
    return best;
}

}  // namespace

const zrk::VisibleSpot* FindVisibleSpot(const zrk::VisibilityMap* map, const zrk::ShapeInstance& part) {
    return map != nullptr ? map->Find(part) : nullptr;
}

std::shared_ptr<const zrk::VisibilityMap> VisibilityOf(const zrk::ShapeInstance& part) {
    const auto view = MainViewOf(part);
    return view ? view->GetVisibilityMap() : nullptr;
}

du::SmartPtr<zrk::ShapeInstance> BestSeenPart(const du::SmartPtr<zrk::ShapeInstance>& part,
                                              const du::SmartPtr<zrk::BaseInstance>& assembly) {
    const auto sbom = du::DynamicCast<zrk::illustration::SbomInstance>(assembly);
    const auto scene = part ? part->GetShapeScene() : du::SmartPtr<zrk::ShapeScene>();
    const auto map = sbom && scene ? VisibilityOf(*part) : nullptr;
    if (map == nullptr || map->Find(*part) != nullptr) return part;
    zrk::illustration::SbomInstance::InstanceSet members;
    zrk::illustration::SbomInstance::InstanceSet listedMembers;
    sbom->GetEbomInstancesForWeld(members, listedMembers);
    du::SmartPtr<zrk::ShapeInstance> best = part;
    std::size_t bestArea = 0;
    for (const auto& member : members) {
        du::SmartPtr<zrk::ShapeInstance> candidate;
        scene->GetShapeInstance(member, candidate);
        const auto* spot = candidate ? map->Find(*candidate) : nullptr;
        if (spot == nullptr || spot->area <= bestArea) continue;
        best = candidate;
        bestArea = spot->area;
    }
    return best;
}

bool FindAnchor(const zrk::ShapeInstance& part, dg::DPoint3D& anchor) {
    const zrg::Shape* shape = part.GetShape() ? part.GetShape()->GetShapeData() : nullptr;
    if (shape == nullptr || shape->GetTriangleCount() == 0) return false;
    dg::Location location;
    part.GetLocation(location);
    const dg::DMat44 localToWorld = location.GetXform();
    const auto map = VisibilityOf(part);
    if (const auto* spot = FindVisibleSpot(map.get(), part)) {
        anchor = spot->world * localToWorld.Invert();
        return true;
    }
    dg::Camera3D camera;
    if (const auto view = MainViewOf(part)) view->GetCamera(camera);
    anchor = MiddleOfLargestTriangle(*shape, localToWorld * camera.GetWorldToPixel(),
                                     localToWorld.LinearDeterminant() < 0.0);
    return true;
}

}  // namespace zrannotations
