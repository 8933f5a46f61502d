#include "zrk/world/World.h"

#include <utility>

#include "du/Localizer.h"
#include "du/ProcessWide.h"
#include "zrk/object/Checked.h"

namespace zrk {
namespace {

du::ProcessWide<World> theWorld;

}  // namespace

du::SmartPtr<World> World::GetWorld() { return theWorld.Get(); }

void World::Start(unsigned poolThreads) { theWorld.Exchange(new World(poolThreads)); }

void World::Stop() {
    // Tasks may ask for the world, so it stays in place until the pool is quiet.
    if (const auto world = GetWorld()) world->m_taskPool.Shutdown();
    theWorld.Exchange(nullptr);
}

World::World(unsigned poolThreads)
    : m_tree(Checked(new Tree)), m_annoSetTable(Checked(new AnnoSetTable)), m_taskPool(poolThreads) {}

World::~World() = default;

du::Symbol World::GetObjectClass() const {
    static const du::Symbol kClass("zrk::World");
    return kClass;
}

void World::RegisterObserver(const du::SmartPtr<WorldObserver>& observer, bool) {
    m_observers.Register(observer);
}

du::SmartPtr<MultiRootContainer> World::GetMRC() const {
    const std::lock_guard hold(m_mutex);
    return m_container;
}

void World::SetMRC(const du::SmartPtr<MultiRootContainer>& container) {
    du::SmartPtr<MultiRootContainer> released = container;
    const std::lock_guard hold(m_mutex);
    std::swap(released, m_container);
}

bool World::SetLanguage(const std::string& language) {
    if (!du::Localizer::HasLanguage(language)) return false;
    du::Localizer::SetLanguage(language);
    m_observers.NotifyAll([](WorldObserver& observer) { observer.OnLanguageChanged(); });
    return true;
}

}  // namespace zrk
