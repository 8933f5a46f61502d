#include "app/sheet/Solids.h"

#include <cstdint>
#include <utility>

#include "app/sheet/PartIndex.h"
#include "app/sheet/ScenePictures.h"

namespace zrsheet {
namespace {

std::array<double, 3> Array(const dg::DVec3& vector) { return {vector.x, vector.y, vector.z}; }

}  // namespace

std::vector<SheetSolid> SolidsOf(const Document& document, const zrk::PickScene& scene) {
    const PartIndex index(document);
    const std::vector<dg::Color> colors = ColorsOf(scene, document.Model());
    std::vector<SheetSolid> solids;
    solids.reserve(scene.GetParts().size());
    for (std::size_t i = 0; i < scene.GetParts().size(); ++i) {
        const auto& part = scene.GetParts()[i];
        SheetSolid solid;
        static_cast<SheetPart&>(solid) = index.Of(*part);
        if (part->GetShape()) solid.shape = part->GetShape()->GetShapeData();
        if (!solid.shape) continue;
        solid.toWorld = scene.GetRays().GetToWorld(static_cast<std::uint32_t>(i));
        if (!colors.empty()) solid.color = CssColor(colors[i]);
        solids.push_back(std::move(solid));
    }
    return solids;
}

SheetCamera CameraOf(const dg::Camera3D& camera) {
    const dg::DPoint3D middle(0.5 * camera.GetViewportWidth(), 0.5 * camera.GetViewportHeight(), 0.5);
    const auto inWorld = [&](double y, double z) {
        return dg::DPoint3D(middle.x, middle.y + y, middle.z + z) * camera.GetPixelToWorld();
    };
    const dg::DPoint3D at = inWorld(0.0, 0.0);
    return {Array(inWorld(0.0, 0.25) - at), Array(inWorld(-1.0, 0.0) - at)};
}

}  // namespace zrsheet
