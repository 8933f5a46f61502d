#include "zrk/scene/PickScene.h"

#include "zrk/scene/PickFlags.h"

namespace zrk {
namespace {

constexpr std::uint32_t kSolidMask = 0x1;
constexpr std::uint32_t kPhantomMask = 0x2;

std::uint32_t MaskOf(du::Flags flags) {
    return flags.Has(PICK_EXCLUDE_PHANTOM) ? kSolidMask : kSolidMask | kPhantomMask;
}

}  // namespace

PickScene::PickScene(const std::vector<du::SmartPtr<ShapeInstance>>& parts, const PickScene* former)
    : m_rays(former != nullptr ? &former->m_rays : nullptr) {
    for (const auto& part : parts) {
        zrg::Shape* shape = part->GetShape() ? part->GetShape()->GetShapeData() : nullptr;
        if (shape == nullptr || shape->GetTriangleCount() == 0 || !part->IsVisible()) continue;
        dg::Location location;
        part->GetLocation(location);
        const std::uint32_t placement =
            m_rays.Add(shape, location, part->IsPhantom() ? kPhantomMask : kSolidMask);
        m_placements.emplace(part.get(), placement);
        m_parts.push_back(part);
    }
    m_rays.Commit();
}

std::vector<PickResult> PickScene::ResultOf(const zrg::RayHit& hit) const {
    std::vector<PickResult> results;
    if (hit) results.emplace_back(m_parts[hit.placement], hit.point);
    return results;
}

std::vector<PickResult> PickScene::Pick(const dg::Ray& ray, du::Flags flags) const {
    return ResultOf(m_rays.Nearest(ray, MaskOf(flags)));
}

std::vector<PickResult> PickScene::PickOnly(const ShapeInstance& part, const dg::Ray& ray,
                                            du::Flags flags) const {
    const auto placement = m_placements.find(&part);
    if (placement == m_placements.end() || (flags.Has(PICK_EXCLUDE_PHANTOM) && part.IsPhantom())) return {};
    return ResultOf(m_rays.NearestOf(ray, placement->second));
}

}  // namespace zrk
