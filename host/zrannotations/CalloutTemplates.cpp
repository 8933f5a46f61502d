#include "zrannotations/CalloutTemplates.h"

#include <mutex>
#include <unordered_map>

namespace zrannotations {
namespace {

/// Never freed: callouts in static storage may ask late.
struct Registry {
    std::mutex mutex;  // guards all below
    std::vector<du::SmartPtr<TAnnotation>> inOrder;
    std::unordered_map<std::string, std::size_t> places;
};

Registry& TheRegistry() {
    static auto& registry = *new Registry;
    return registry;
}

}  // namespace

std::vector<du::SmartPtr<TAnnotation>> GetCalloutTemplates() {
    const std::lock_guard hold(TheRegistry().mutex);
    return TheRegistry().inOrder;
}

du::SmartPtr<TAnnotation> FindCalloutTemplate(const std::string& id) {
    const std::lock_guard hold(TheRegistry().mutex);
    const auto place = TheRegistry().places.find(id);
    return place != TheRegistry().places.end() ? TheRegistry().inOrder[place->second]
                                               : du::SmartPtr<TAnnotation>();
}

void AddCalloutTemplate(const du::SmartPtr<TAnnotation>& definition) {
    du::SmartPtr<TAnnotation> replaced = definition;  // released after the lock
    Registry& registry = TheRegistry();
    const std::lock_guard hold(registry.mutex);
    const auto [place, isNew] = registry.places.emplace(definition->GetId(), registry.inOrder.size());
    if (isNew) {
        registry.inOrder.push_back(definition);
    } else {
        std::swap(registry.inOrder[place->second], replaced);
    }
}

void ClearCalloutTemplates() {
    std::vector<du::SmartPtr<TAnnotation>> released;
    const std::lock_guard hold(TheRegistry().mutex);
    released.swap(TheRegistry().inOrder);
    TheRegistry().places.clear();
}

}  // namespace zrannotations
