// Base of observers, events and of the managers (kernel, world) that keep them alive.

#pragma once

#include <atomic>
#include <memory>
#include <vector>

#include "du/LeafLock.h"
#include "du/RefCounted.h"
#include "du/SmartPtr.h"
#include "du/Symbol.h"

namespace dom {

/// Any thread.
class ManagedObject : public virtual du::RefCounted {
public:
    ManagedObject();
    ManagedObject(const ManagedObject&) = delete;
    ManagedObject& operator=(const ManagedObject&) = delete;
    ~ManagedObject() override;

    virtual du::Symbol GetObjectClass() const;

    /// This object keeps `object` alive until it leaves its last registry, completes, or this object goes.
    /// Its former manager, if any, drops it.
    void ManageObject(const du::SmartPtr<ManagedObject>& object);
    /// A counted copy of what is managed here, in the order in which it came.
    std::vector<du::SmartPtr<ManagedObject>> GetManaged() const;

    /// Registries count an observer in and out; when it leaves the last one its manager drops it.
    void AddRegistration();
    void RemoveRegistration();
    /// The object's manager drops it. Requires: the caller holds a reference.
    void LeaveManager();

private:
    class Keeper;

    mutable du::LeafLock m_mutex;      // guards m_keeper and m_manager; taken before a keeper's
    std::shared_ptr<Keeper> m_keeper;  // of what this object manages
    std::weak_ptr<Keeper> m_manager;   // of the object that manages this one
    // This one's place in its manager's list, guarded by that keeper's lock.
    ManagedObject* m_previous = nullptr;
    ManagedObject* m_next = nullptr;
    std::atomic<int> m_registrations{0};
};

}  // namespace dom
