#include "zrk/scene/ShapeScene.h"

#include "zrk/object/Checked.h"
#include "zrk/operation/CallStep.h"
#include "zrk/operation/Operation.h"
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

// The operation holds the scene already, so the calls may too.
template <class Undo, class Redo>
void ShapeScene::TakeIn(Undo undo, Redo redo) {
    const auto operation = History::IsAnyActive() ? GetHistory().GetOpenOperation() : nullptr;
    if (!operation) return;
    const du::SmartPtr<ShapeScene> scene(this);
    operation->AddStep(
        Checked(new CallStep([scene, undo] { undo(*scene); }, [scene, redo] { redo(*scene); })));
}

du::SmartPtr<ShapeInstance> ShapeScene::CreateShapeInstance(const du::SmartPtr<Instance>& instance,
                                                            const du::Symbol& shapeSource) {
    du::SmartPtr<ShapeInstance> part;
    {
        const std::unique_lock hold(m_partsMutex);
        const auto known = m_byInstance.find(instance.get());
        if (known != m_byInstance.end()) return known->second;
        part = Checked(new ShapeInstance(instance, shapeSource, m_created, m_shapeLink));
        m_byInstance.emplace(instance.get(), part);
        m_inOrder.emplace(m_created++, part);
    }
    Touch();
    TakeIn([part](ShapeScene& scene) { scene.RemoveShapeInstance(part); },
           [part](ShapeScene& scene) { scene.PutBack(part); });
    GetObservers().NotifyAll([&](SceneObserver& observer) { observer.OnShapeInstanceCreated(part); });
    return part;
}

void ShapeScene::PutBack(const du::SmartPtr<ShapeInstance>& part) {
    {
        const std::unique_lock hold(m_partsMutex);
        if (!m_byInstance.emplace(part->m_instance.get(), part).second) return;
        m_inOrder.emplace(part->GetSequence(), part);
    }
    Touch();
    GetObservers().NotifyAll([&](SceneObserver& observer) { observer.OnShapeInstanceCreated(part); });
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
    TakeIn([part](ShapeScene& scene) { scene.PutBack(part); },
           [part](ShapeScene& scene) { scene.RemoveShapeInstance(part); });
    GetObservers().NotifyAll([&](SceneObserver& observer) { observer.OnShapeInstanceRemoved(part); });
}

void ShapeScene::SetLocation(const du::SmartPtr<ShapeInstance>& shapeInstance, const dg::Location& location) {
    dg::Location former = location;
    {
        const std::lock_guard hold(shapeInstance->m_mutex);
        std::swap(shapeInstance->m_location, former);
    }
    Touch();
    if (!(former == location)) {
        TakeIn([part = shapeInstance, former](ShapeScene& scene) { scene.SetLocation(part, former); },
               [part = shapeInstance, location](ShapeScene& scene) { scene.SetLocation(part, location); });
    }
    GetObservers().NotifyAll([&](SceneObserver& observer) { observer.OnShapeInstanceMoved(shapeInstance); });
}

void ShapeScene::SetVisible(const du::SmartPtr<ShapeInstance>& shapeInstance, bool visible) {
    if (shapeInstance->m_isVisible.exchange(visible) == visible) return;
    Touch();
    TakeIn([part = shapeInstance, visible](ShapeScene& scene) { scene.SetVisible(part, !visible); },
           [part = shapeInstance, visible](ShapeScene& scene) { scene.SetVisible(part, visible); });
    GetObservers().NotifyAll(
        [&](SceneObserver& observer) { observer.OnShapeInstanceVisibilityChanged(shapeInstance, visible); });
}

void ShapeScene::SetPhantom(const du::SmartPtr<ShapeInstance>& shapeInstance, bool phantom) {
    if (shapeInstance->m_isPhantom.exchange(phantom) == phantom) return;
    Touch();
    TakeIn([part = shapeInstance, phantom](ShapeScene& scene) { scene.SetPhantom(part, !phantom); },
           [part = shapeInstance, phantom](ShapeScene& scene) { scene.SetPhantom(part, phantom); });
}

std::shared_ptr<const PickScene> ShapeScene::GetPickScene() const {
    const std::lock_guard hold(m_pickMutex);
    const std::uint64_t revision = GetRevision();
    if (!m_pickScene || m_pickRevision != revision) {
        m_pickScene = std::make_shared<const PickScene>(GetShapeInstances(), m_pickScene.get());
        m_pickRevision = revision;
    }
    return m_pickScene;
}

}  // namespace zrk
