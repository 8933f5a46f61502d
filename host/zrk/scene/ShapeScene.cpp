#include "zrk/scene/ShapeScene.h"

#include "zrk/scene/PickScene.h"

namespace zrk {

constinit const ClassType ShapeScene::CLASS_TYPE(22, "zrk::ShapeScene", &Scene::CLASS_TYPE);

ShapeScene::ShapeScene() : m_shapeLink(std::make_shared<du::BackLink<ShapeScene>>(this)) {}

ShapeScene::~ShapeScene() { m_shapeLink->Close(); }

void ShapeScene::GetShapeInstance(const du::ConstSmartPtr<Instance>& instance,
                                  du::SmartPtr<ShapeInstance>& out) const {
    du::SmartPtr<ShapeInstance> found;
    {
        const std::shared_lock hold(m_partsMutex);
        const auto entry = m_byInstance.find(instance.get());
        if (entry != m_byInstance.end()) found = entry->second;
    }
    out = found;
}

std::vector<du::SmartPtr<ShapeInstance>> ShapeScene::GetShapeInstances() const {
    std::vector<du::SmartPtr<ShapeInstance>> parts;
    const std::shared_lock hold(m_partsMutex);
    parts.reserve(m_inOrder.size());
    for (const auto& [sequence, part] : m_inOrder) parts.push_back(part);
    return parts;
}

du::SmartPtr<ShapeInstance> ShapeScene::CreateShapeInstance(const du::SmartPtr<Instance>& instance,
                                                            const du::Symbol& shapeSource) {
    du::SmartPtr<ShapeInstance> part;
    {
        const std::unique_lock hold(m_partsMutex);
        du::SmartPtr<ShapeInstance>& entry = m_byInstance[instance.get()];
        if (entry) return entry;
        entry = new ShapeInstance(instance, shapeSource, m_created, m_shapeLink);
        m_inOrder.emplace(m_created++, entry);
        part = entry;
    }
    Touch();
    GetObservers().NotifyAll([&](SceneObserver& observer) { observer.OnShapeInstanceCreated(part); });
    return part;
}

void ShapeScene::RemoveShapeInstance(const du::SmartPtr<ShapeInstance>& shapeInstance) {
    const du::SmartPtr<ShapeInstance> part =
        shapeInstance;  // the argument may be the last reference, in our own map
    {
        const std::unique_lock hold(m_partsMutex);
        if (m_inOrder.erase(part->GetSequence()) == 0) return;
        m_byInstance.erase(part->m_instance.get());
    }
    Touch();
    GetObservers().NotifyAll([&](SceneObserver& observer) { observer.OnShapeInstanceRemoved(part); });
}

void ShapeScene::SetLocation(const du::SmartPtr<ShapeInstance>& shapeInstance, const dg::Location& location) {
    {
        const std::lock_guard hold(shapeInstance->m_mutex);
        shapeInstance->m_location = location;
    }
    Touch();
    GetObservers().NotifyAll([&](SceneObserver& observer) { observer.OnShapeInstanceMoved(shapeInstance); });
}

void ShapeScene::SetVisible(const du::SmartPtr<ShapeInstance>& shapeInstance, bool visible) {
    if (shapeInstance->m_isVisible.exchange(visible) == visible) return;
    Touch();
    GetObservers().NotifyAll(
        [&](SceneObserver& observer) { observer.OnShapeInstanceVisibilityChanged(shapeInstance, visible); });
}

void ShapeScene::SetPhantom(const du::SmartPtr<ShapeInstance>& shapeInstance, bool phantom) {
    if (shapeInstance->m_isPhantom.exchange(phantom) != phantom) Touch();
}

std::shared_ptr<const PickScene> ShapeScene::GetPickScene() const {
    const std::lock_guard hold(m_pickMutex);
    const std::uint64_t revision = GetRevision();
    if (!m_pickScene || m_pickRevision != revision) {
        m_pickScene = std::make_shared<const PickScene>(GetShapeInstances());
        m_pickRevision = revision;
    }
    return m_pickScene;
}

}  // namespace zrk
