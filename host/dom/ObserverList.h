// The observers of one object. Notifications go over a counted copy with no lock held, so an observer may
// register and unregister anybody, itself included, or let the observed object go.

#pragma once

#include <algorithm>
#include <mutex>
#include <vector>

#include "du/SmartPtr.h"

namespace dom {

/// Any thread. Observers are told in the order in which they registered.
template <class T>
class ObserverList {
public:
    ObserverList() = default;
    ObserverList(const ObserverList&) = delete;
    ObserverList& operator=(const ObserverList&) = delete;
    ~ObserverList() {
        for (const auto& observer : m_observers) observer->RemoveRegistration();
    }

    /// Null and known observers are passed over.
    void Register(const du::SmartPtr<T>& observer) {
        if (!observer) return;
        const std::lock_guard hold(m_mutex);
        if (std::find(m_observers.begin(), m_observers.end(), observer) != m_observers.end()) return;
        observer->AddRegistration();
        m_observers.push_back(observer);
    }

    /// Does not wait for a notification in flight.
    void Unregister(const du::SmartPtr<T>& observer) {
        du::SmartPtr<T> removed;
        {
            const std::lock_guard hold(m_mutex);
            const auto place = std::find(m_observers.begin(), m_observers.end(), observer);
            if (place == m_observers.end()) return;
            removed = *place;
            m_observers.erase(place);
        }
        removed->RemoveRegistration();
    }

    std::vector<du::SmartPtr<T>> Snapshot() const {
        const std::lock_guard hold(m_mutex);
        return m_observers;
    }

    /// Calls `notify(observer)` for each.
    template <class Notify>
    void NotifyAll(Notify notify) const {
        for (const auto& observer : Snapshot()) notify(*observer);
    }

private:
    mutable std::mutex m_mutex;  // guards m_observers
    std::vector<du::SmartPtr<T>> m_observers;
};

}  // namespace dom
