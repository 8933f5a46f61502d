#include "app/sheet/Hotspots.h"

#include <map>
#include <string>
#include <utility>

namespace zrsheet {
namespace {

using SbomPtr = ProductModel::SbomPtr;

/// What a hotspot tells about the parts of the model.
class PartIndex {
public:
    explicit PartIndex(const Document& document) : m_document(document) {
        std::map<unsigned, int> counts;
        for (const SbomPtr& instance : document.Model().Instances()) {
            if (instance->HasChildren()) continue;
            SheetHotspot spot;
            spot.hasItem = FindItem(instance, spot.itemId);
            spot.id = "part-" + std::to_string(spot.itemId) + "-" + std::to_string(++counts[spot.itemId]);
            if (spot.hasItem) {
                bool isCustom = false;
                document.Items()->GetLabel(spot.itemId, spot.label, isCustom);
            }
            spot.name = ProductModel::NameOf(*instance);
            spot.instance = instance->GetIdentifier().Text();
            m_spots.emplace(instance->GetEbomInstance().get(), std::move(spot));
        }
    }

    /// Null for what is no part of the model.
    const SheetHotspot* Find(const zrk::Instance& instance) const {
        const auto found = m_spots.find(&instance);
        return found != m_spots.end() ? &found->second : nullptr;
    }

private:
    /// Its own, or that of the assembly around it.
    bool FindItem(SbomPtr instance, unsigned& id) const {
        while (instance) {
            if (m_document.Items()->GetItemIdForInstance(instance, id)) return true;
            SbomPtr parent;
            instance->GetParent(parent);
            instance = parent;
        }
        id = 0;
        return false;
    }

    const Document& m_document;
    std::map<const zrk::Instance*, SheetHotspot> m_spots;
};

std::string NameOf(const zrk::Instance& instance) {
    du::SmartPtr<zrk::ComponentInstance> component;
    instance.GetComponentInstance(component);
    du::Symbol name;
    component->GetID(name);
    return name.Text();
}

}  // namespace

std::vector<SheetHotspot> HotspotsOf(const Document& document, const zrk::PickScene& scene,
                                     std::vector<VisibleArea> areas) {
    const PartIndex parts(document);
    std::vector<SheetHotspot> spots;
    spots.reserve(areas.size());
    for (VisibleArea& area : areas) {
        du::SmartPtr<zrk::Instance> instance;
        scene.GetParts()[area.placement]->GetInstance(instance);
        SheetHotspot& spot = spots.emplace_back();
        if (const SheetHotspot* part = parts.Find(*instance)) {
            spot = *part;
        } else {
            spot.name = NameOf(*instance);
            spot.id = spot.name;
        }
        spot.rings = std::move(area.rings);
    }
    return spots;
}

}  // namespace zrsheet
