#include "dom/ManagedObject.h"

#include <utility>

namespace dom {

/// What one manager keeps. Apart from the manager, so that an object can outlive it.
class ManagedObject::Keeper {
public:
    void Add(const du::SmartPtr<ManagedObject>& object) {
        const std::lock_guard hold(m_mutex);
        m_objects.insert(object);
    }
    void Remove(ManagedObject* object) {
        const du::SmartPtr<ManagedObject> key(object);  // outlives the lock: releasing may run any code
        const std::lock_guard hold(m_mutex);
        m_objects.erase(key);
    }
    std::unordered_set<du::SmartPtr<ManagedObject>> Snapshot() const {
        const std::lock_guard hold(m_mutex);
        return m_objects;
    }

private:
    mutable std::mutex m_mutex;  // guards m_objects
    std::unordered_set<du::SmartPtr<ManagedObject>> m_objects;
};

ManagedObject::ManagedObject() = default;

ManagedObject::~ManagedObject() = default;

du::Symbol ManagedObject::GetObjectClass() const {
    static const du::Symbol kClass("dom::ManagedObject");
    return kClass;
}

void ManagedObject::ManageObject(const du::SmartPtr<ManagedObject>& object) {
    if (!object) return;
    std::shared_ptr<Keeper> keeper;
    {
        const std::lock_guard hold(m_mutex);
        if (!m_keeper) m_keeper = std::make_shared<Keeper>();
        keeper = m_keeper;
    }
    keeper->Add(object);
    const std::lock_guard hold(object->m_mutex);
    object->m_manager = keeper;
}

void ManagedObject::ReleaseManaged(ManagedObject* object) {
    std::shared_ptr<Keeper> keeper;
    {
        const std::lock_guard hold(m_mutex);
        keeper = m_keeper;
    }
    if (keeper) keeper->Remove(object);
}

std::unordered_set<du::SmartPtr<ManagedObject>> ManagedObject::GetManaged() const {
    std::shared_ptr<Keeper> keeper;
    {
        const std::lock_guard hold(m_mutex);
        keeper = m_keeper;
    }
    return keeper ? keeper->Snapshot() : std::unordered_set<du::SmartPtr<ManagedObject>>();
}

void ManagedObject::AddRegistration() { ++m_registrations; }

void ManagedObject::RemoveRegistration() {
    if (--m_registrations == 0) LeaveManager();
}

void ManagedObject::LeaveManager() {
    std::shared_ptr<Keeper> keeper;
    {
        const std::lock_guard hold(m_mutex);
        keeper = m_manager.lock();
        m_manager.reset();
    }
    if (keeper) keeper->Remove(this);
}

}  // namespace dom
