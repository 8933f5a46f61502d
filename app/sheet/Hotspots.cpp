#include "app/sheet/Hotspots.h"

#include <utility>

#include "app/sheet/PartIndex.h"

namespace zrsheet {

std::vector<SheetHotspot> HotspotsOf(const Document& document, const zrk::PickScene& scene,
                                     std::vector<VisibleArea> areas) {
    const PartIndex parts(document);
    std::vector<SheetHotspot> spots;
    spots.reserve(areas.size());
    for (VisibleArea& area : areas)
        spots.push_back({parts.Of(*scene.GetParts()[area.placement]), std::move(area.rings)});
    return spots;
}

}  // namespace zrsheet
