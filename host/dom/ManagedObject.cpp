#include "dom/ManagedObject.h"

#include <mutex>

namespace dom {

/// What one manager keeps. Apart from the manager, so that an object can outlive it. The objects are chained
/// among themselves: events come and go by the ten thousand, and a table would cost more than they do.
class ManagedObject::Keeper {
public:
    Keeper() = default;
    Keeper(const Keeper&) = delete;
    Keeper& operator=(const Keeper&) = delete;
    // Nobody can reach the keeper any more, so what is released may run any code.
    ~Keeper() {
        while (m_first != nullptr) {
            const auto released = Unlink(*m_first);
        }
    }

    void Add(du::SmartPtr<ManagedObject> object) {
        const std::lock_guard hold(m_mutex);
        ManagedObject* added = object.Detach();
        added->m_previous = m_last;
        (m_last != nullptr ? m_last->m_next : m_first) = added;
        m_last = added;
    }
    /// The caller releases the object once it holds no lock. Requires: the object was added.
    [[nodiscard]] du::SmartPtr<ManagedObject> Remove(ManagedObject& object) {
        const std::lock_guard hold(m_mutex);
        return Unlink(object);
    }
    std::vector<du::SmartPtr<ManagedObject>> Snapshot() const {
        std::vector<du::SmartPtr<ManagedObject>> objects;
        const std::lock_guard hold(m_mutex);
        for (ManagedObject* object = m_first; object != nullptr; object = object->m_next)
            objects.emplace_back(object);
        return objects;
    }

private:
    du::SmartPtr<ManagedObject> Unlink(ManagedObject& object) {
        (object.m_previous != nullptr ? object.m_previous->m_next : m_first) = object.m_next;
        (object.m_next != nullptr ? object.m_next->m_previous : m_last) = object.m_previous;
        object.m_previous = object.m_next = nullptr;
        return du::SmartPtr<ManagedObject>::Adopt(&object);
    }

    mutable du::LeafLock m_mutex;  // guards the two below and the links of the objects between them
    ManagedObject* m_first = nullptr;
    ManagedObject* m_last = nullptr;
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
    std::shared_ptr<Keeper> former;  // outlives the lock
    const std::lock_guard hold(object->m_mutex);
    former = object->m_manager.lock();
    if (former == keeper) return;
    // The caller's reference keeps the object, so nothing is freed under the lock.
    if (former) static_cast<void>(former->Remove(*object));
    keeper->Add(object);
    object->m_manager = keeper;
}

std::vector<du::SmartPtr<ManagedObject>> ManagedObject::GetManaged() const {
    std::shared_ptr<Keeper> keeper;
    {
        const std::lock_guard hold(m_mutex);
        keeper = m_keeper;
    }
    return keeper ? keeper->Snapshot() : std::vector<du::SmartPtr<ManagedObject>>();
}

void ManagedObject::AddRegistration() { ++m_registrations; }

void ManagedObject::RemoveRegistration() {
    if (--m_registrations == 0) LeaveManager();
}

void ManagedObject::LeaveManager() {
    // Both outlive the lock: a manager that goes meanwhile leaves its keeper to us.
    std::shared_ptr<Keeper> keeper;
    du::SmartPtr<ManagedObject> released;
    const std::lock_guard hold(m_mutex);
    keeper = m_manager.lock();
    if (keeper) released = keeper->Remove(*this);
    m_manager.reset();
}

}  // namespace dom
